#include "editor/dialogs/WizardDialog.h"

#include "editor/dialogs/DialogParts.h"
#include "editor/messages/ErrorBox.h"
#include "editor/project/ChosenFile.h"
#include "platform/Paths.h"

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFormLayout>
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
    auto* form = new QFormLayout;
    const QPushButton* browse = AddBrowseRow(*form, u"规则文件(&F)："_s, m_ruleFile, u'W');
    connect(browse, &QPushButton::clicked, this, [this] { RunGuarded([&] { Browse(); }); });
    form->addRow(u"清单库(&B)："_s, m_billFile);
    form->addRow(u"定额库(&Q)："_s, m_quotaFile);
    form->addRow(u"说明(&N)："_s, m_note);
    form->addRow(QString(), m_allowBack);

    auto* column = new QVBoxLayout(this);
    column->addLayout(form);
    column->addWidget(MakeButtons(*this, new QPushButton(u"开始"_s), u"打开向导的这一步"_s));
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
    const QString file = ChooseRuleFile(this, folder);
    if (!file.isEmpty()) FillRuleFiles({}, PathTextOf(file));
}

} // namespace editor
