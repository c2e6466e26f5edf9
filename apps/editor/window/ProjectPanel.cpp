#include "editor/window/ProjectPanel.h"

#include "editor/dialogs/LibraryCombo.h"
#include "editor/window/Actions.h"
#include "platform/Paths.h"
#include "widgets/WheelGuard.h"

#include <QtCore/QDir>
#include <QtCore/QSignalBlocker>
#include <QtGui/QAction>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QTreeWidget>
#include <QtWidgets/QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

enum Column { NameColumn, StateColumn };

/// A text that may be longer than its place; it never makes the window wider.
QLabel* ValueLabel()
{
    auto* label = new QLabel;
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    return label;
}

QToolButton* ButtonFor(QAction& action)
{
    auto* button = new QToolButton;
    button->setDefaultAction(&action);
    button->setToolButtonStyle(Qt::ToolButtonTextOnly);
    button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    button->setFocusPolicy(Qt::StrongFocus);
    return button;
}

QTreeWidgetItem* MakeRow(const shared::RuleFileState& state, bool isCurrent)
{
    auto* row = new QTreeWidgetItem;
    row->setText(NameColumn, isCurrent ? state.Name() + u"（当前配置）"_s : state.Name());
    row->setText(StateColumn, state.Describe());
    QFont font;
    font.setBold(isCurrent);
    row->setFont(NameColumn, font);
    for (const int column : {NameColumn, StateColumn})
        row->setToolTip(column, platform::ToNative(state.path) + u'\n' + state.Describe());
    return row;
}

} // namespace

ProjectPanel::ProjectPanel(const Actions& actions, Wishes wishes)
    : m_wishes(std::move(wishes)), m_folder(ValueLabel()), m_mode(new QComboBox), m_spec(new QComboBox),
      m_billLibrary(MakeLibraryCombo()), m_quotaLibrary(MakeLibraryCombo()), m_guideHint(new QLabel),
      m_files(new QTreeWidget)
{
    auto* column = new QVBoxLayout(this);
    column->addWidget(MakeSettings());
    column->addWidget(MakeRuleFiles(actions), 1);
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

QWidget* ProjectPanel::MakeRuleFiles(const Actions& actions)
{
    auto* box = new QGroupBox(u"规则文件"_s);
    auto* row = new QHBoxLayout(box);
    m_files->setHeaderLabels({u"配置"_s, u"状态"_s});
    m_files->setRootIsDecorated(false);
    m_files->setUniformRowHeights(true);
    m_files->setAccessibleName(u"规则文件"_s);
    setFocusProxy(m_files);
    m_files->header()->setSectionResizeMode(NameColumn, QHeaderView::ResizeToContents);
    connect(m_files, &QTreeWidget::currentItemChanged, this, [this] { m_wishes.selectionChanged(); });
    row->addWidget(m_files, 1);
    auto* buttons = new QVBoxLayout;
    for (QAction* action : {actions.configure, actions.wizard, actions.refresh, actions.attributes,
                            actions.writeHead, actions.history})
        buttons->addWidget(ButtonFor(*action));
    buttons->addStretch();
    row->addLayout(buttons);
    return box;
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

void ProjectPanel::ShowRuleFiles(const QList<shared::RuleFileState>& files)
{
    const auto selected = Selected();
    const CString former = selected ? selected->path : CString();
    m_states = files;
    {
        const QSignalBlocker quiet(m_files);
        m_files->clear();
        for (const shared::RuleFileState& state : m_states)
            m_files->addTopLevelItem(MakeRow(state, m_files->topLevelItemCount() == 0));
        for (int i = m_files->topLevelItemCount() - 1; i >= 0; --i)
            if (i == 0 || m_states[i].path == former) {
                m_files->setCurrentItem(m_files->topLevelItem(i));
                break;
            }
    }
    m_wishes.selectionChanged();
}

std::optional<shared::RuleFileState> ProjectPanel::Selected() const
{
    const int row = m_files->indexOfTopLevelItem(m_files->currentItem());
    if (row < 0) return std::nullopt;
    return m_states[row];
}

} // namespace editor
