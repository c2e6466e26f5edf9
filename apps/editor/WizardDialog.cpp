#include "editor/WizardDialog.h"

#include "editor/ChosenFile.h"
#include "editor/Guard.h"
#include "platform/Paths.h"

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

constexpr int FieldWidth = 40; ///< in characters
constexpr int NoteLines = 4;

} // namespace

WizardDialog::WizardDialog(QWidget* parent, const WizardStart& start, const CStringArray& ruleFiles)
    : QDialog(parent), m_ruleFile(new QComboBox), m_billFile(new QLineEdit(start.billFile)),
      m_quotaFile(new QLineEdit(start.quotaFile)), m_note(new QPlainTextEdit(start.note)),
      m_allowBack(new QCheckBox(u"允许“上一步”(&A)"_s))
{
    setWindowTitle(u"启动向导"_s);
    m_ruleFile->setMinimumWidth(fontMetrics().averageCharWidth() * FieldWidth);
    m_note->setTabChangesFocus(true);
    m_note->setFixedHeight(fontMetrics().lineSpacing() * NoteLines);
    m_allowBack->setChecked(start.allowBack);
    FillRuleFiles(ruleFiles, start.ruleFile);
    Build();
}

void WizardDialog::Build()
{
    auto* browse = new QPushButton(u"浏览(&W)…"_s);
    browse->setAutoDefault(false);
    connect(browse, &QPushButton::clicked, this, [this] { RunGuarded([&] { Browse(); }); });
    auto* place = new QHBoxLayout;
    place->addWidget(m_ruleFile, 1);
    place->addWidget(browse);

    auto* form = new QFormLayout;
    form->addRow(u"规则文件(&F)："_s, place);
    static_cast<QLabel*>(form->labelForField(place))->setBuddy(m_ruleFile);
    form->addRow(u"清单库(&B)："_s, m_billFile);
    form->addRow(u"定额库(&Q)："_s, m_quotaFile);
    form->addRow(u"说明(&N)："_s, m_note);
    form->addRow(QString(), m_allowBack);

    auto* buttons = new QDialogButtonBox;
    buttons->addButton(u"开始"_s, QDialogButtonBox::AcceptRole)->setDefault(true);
    buttons->addButton(u"取消"_s, QDialogButtonBox::RejectRole);
    connect(buttons, &QDialogButtonBox::accepted, this, [this] { accept(); });
    connect(buttons, &QDialogButtonBox::rejected, this, [this] { reject(); });
    auto* column = new QVBoxLayout(this);
    column->addLayout(form);
    column->addWidget(buttons);
}

WizardStart WizardDialog::Start() const
{
    return {m_ruleFile->currentData().toString(), m_billFile->text(), m_quotaFile->text(),
            m_note->toPlainText().trimmed(), m_allowBack->isChecked()};
}

void WizardDialog::FillRuleFiles(const CStringArray& ruleFiles, const CString& chosen)
{
    for (const CString& path : ruleFiles)
        m_ruleFile->addItem(platform::BeforeLastStop(platform::FileNameOf(path)), path);
    if (m_ruleFile->findData(chosen) < 0) m_ruleFile->addItem(platform::ToNative(chosen), chosen);
    m_ruleFile->setCurrentIndex(m_ruleFile->findData(chosen));
}

void WizardDialog::Browse()
{
    const QString folder = platform::ToNative(platform::FolderOf(m_ruleFile->currentData().toString()));
    const QString file = QFileDialog::getOpenFileName(this, u"规则文件"_s, folder, u"规则文件 (*.xml)"_s);
    if (!file.isEmpty()) FillRuleFiles({}, PathTextOf(file));
}

} // namespace editor
