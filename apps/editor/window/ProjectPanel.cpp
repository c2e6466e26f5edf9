#include "editor/window/ProjectPanel.h"

#include "editor/dialogs/LibraryCombo.h"
#include "widgets/WheelGuard.h"

#include <QtCore/QDir>
#include <QtCore/QSignalBlocker>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

/// A text that may be longer than its place; it never makes the window wider.
QLabel* ValueLabel()
{
    auto* label = new QLabel;
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    return label;
}

} // namespace

ProjectPanel::ProjectPanel(QWidget* files, Wishes wishes)
    : m_wishes(std::move(wishes)), m_folder(ValueLabel()), m_mode(new QComboBox), m_spec(new QComboBox),
      m_billLibrary(MakeLibraryCombo()), m_quotaLibrary(MakeLibraryCombo()), m_guideHint(new QLabel)
{
    auto* column = new QVBoxLayout(this);
    column->addWidget(MakeSettings());
    auto* box = new QGroupBox(u"规则文件"_s);
    auto* list = new QVBoxLayout(box);
    list->addWidget(files);
    column->addWidget(box, 1);
    setFocusProxy(files);
}

QGroupBox* ProjectPanel::MakeSettings()
{
    auto* box = new QGroupBox(u"工程"_s);
    auto* form = new QFormLayout(box);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    for (QComboBox* combo : {m_mode, m_spec})
        combo->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    // As wide as their names need, as far as there is room.
    for (QComboBox* combo : {m_billLibrary, m_quotaLibrary}) {
        combo->setSizeAdjustPolicy(QComboBox::AdjustToContents);
        combo->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    }
    m_mode->addItem(u"清单模式"_s, SQdDeInfo::BillMode);
    m_mode->addItem(u"定额模式"_s, SQdDeInfo::QuotaMode);
    m_mode->setToolTip(u"清单模式：规则下挂清单，清单下挂定额；定额模式：规则下直接挂定额"_s);
    form->addRow(u"文件夹："_s, m_folder);
    form->addRow(u"模式(&M)："_s, m_mode);
    form->addRow(u"专业(&S)："_s, m_spec);
    form->addRow(u"清单库(&B)："_s, m_billLibrary);
    form->addRow(u"定额库(&Q)："_s, m_quotaLibrary);
    m_guideHint->setWordWrap(true);
    m_guideHint->hide();
    form->addRow(QString(), m_guideHint);
    for (QComboBox* combo : {m_mode, m_spec, m_billLibrary, m_quotaLibrary})
        widgets::KeepWheelFrom(*combo);
    ConnectSettings();
    return box;
}

void ProjectPanel::ConnectSettings()
{
    connect(m_mode, &QComboBox::currentIndexChanged, this,
            [this] { m_wishes.setMode(static_cast<SQdDeInfo::EQdDeMode>(m_mode->currentData().toInt())); });
    connect(m_spec, &QComboBox::currentTextChanged, this,
            [this](const QString& name) { m_wishes.setSpec(name); });
    connect(m_billLibrary, &QComboBox::currentIndexChanged, this,
            [this] { m_wishes.setLibrary(embedded::LibraryRole::Bill, ChosenLibrary(*m_billLibrary)); });
    connect(m_quotaLibrary, &QComboBox::currentIndexChanged, this,
            [this] { m_wishes.setLibrary(m_quotaRole, ChosenLibrary(*m_quotaLibrary)); });
}

void ProjectPanel::ShowProject(Project& project)
{
    const QSignalBlocker quietMode(m_mode);
    const QSignalBlocker quietSpec(m_spec);
    m_folder->setText(QDir::toNativeSeparators(project.Folder()));
    m_folder->setToolTip(m_folder->text());
    m_mode->setCurrentIndex(m_mode->findData(project.Mode()));
    m_spec->clear();
    m_spec->addItems(project.Specs());
    m_spec->setCurrentText(project.Spec());
    m_quotaRole = project.QuotaRole();
    FillLibraries(*m_billLibrary, project.Libraries(embedded::LibraryRole::Bill),
                  project.LibraryInUse(embedded::LibraryRole::Bill));
    FillLibraries(*m_quotaLibrary, project.Libraries(m_quotaRole), project.LibraryInUse(m_quotaRole));
    const CString hint = project.GuideHint();
    m_guideHint->setText(u"提示：%1。"_s.arg(hint));
    m_guideHint->setVisible(!hint.isEmpty());
}

} // namespace editor
