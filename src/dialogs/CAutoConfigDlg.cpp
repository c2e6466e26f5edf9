#include "dialogs/CAutoConfigDlg.h"

#include "dialogs/AutoConfigIds.h"
#include "dialogs/ProjectMode.h"
#include "dialogs/grid/FieldTextValidator.h"
#include "dialogs/grid/GridEditors.h"
#include "dialogs/secondary/CExListBox.h"
#include "dialogs/secondary/CTTComboBox.h"
#include "dialogs/template/DialogTemplates.h"
#include "host/HostWindows.h"
#include "host/UserMessage.h"
#include "widgets/CutTextTips.h"
#include "widgets/ListControls.h"
#include "widgets/TextMetrics.h"
#include "widgets/TreeControl.h"
#include "widgets/WindowFrame.h"

#include <QtCore/QPointer>
#include <QtGui/QGuiApplication>
#include <QtGui/QSessionManager>
#include <QtGui/QShortcut>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTabWidget>

#include <array>
#include <cstddef>
#include <initializer_list>
#include <utility>

using namespace Qt::StringLiterals;
using dialogs::DialogEvent;
using dialogs::Notice;
using namespace dialogs::autoconfig;

namespace {

/// Widths of the rule list's columns in pixels, at small fonts.
constexpr std::array RuleColumnWidths{40, 450};

/// Whether the keys that a control gets are its own: those of a text, also in a cell of the grid, and those
/// of a drop list.
bool KeepsItsKeys(const QWidget* focused)
{
    return qobject_cast<const QLineEdit*>(focused) != nullptr ||
           qobject_cast<const QComboBox*>(focused) != nullptr;
}

} // namespace

CAutoConfigDlg::CAutoConfigDlg(const CString& configFile, CWnd* parent)
    : CAutoConfigDlg(std::make_unique<CQdDeConfigPresenter>(configFile), parent)
{
}

CAutoConfigDlg::CAutoConfigDlg(std::unique_ptr<CQdDeConfigPresenter> presenter, CWnd* parent)
    : TemplateDialog(dialogs::templates::AutoConfig(), parent), m_presenter(std::move(presenter))
{
    m_billPicker.SetShowGetQdNumDlg(false);
    EnterEvents();
    connect(&m_grid, &CGridCtrl::Notify, this, &CAutoConfigDlg::OnGridNotify);
    connect(qGuiApp, &QGuiApplication::commitDataRequest, this, &CAutoConfigDlg::OnLogOff);
}

CAutoConfigDlg::~CAutoConfigDlg()
{
    m_presenter.reset();
}

// Nothing happens at the end of an in-place edit, since column 2 reaches the tree by the flush (see the class
// comment), nor at a press of the explanation, which only the wizard form shows.
void CAutoConfigDlg::EnterEvents()
{
    On(DialogEvent::UserMessage, host::PresenceMessage, [](Notice& notice) { notice.result = 1; });
    On(DialogEvent::UserMessage, host::DePickedMessage,
       [this](Notice& notice) { notice.result = OnDePicked(static_cast<const SPickedDe*>(notice.record)); });
    On(DialogEvent::UserMessage, host::QdPickedMessage,
       [this](Notice& notice) { notice.result = OnQdPicked(static_cast<const SPickedQd*>(notice.record)); });
    On(DialogEvent::Command, NewFileButton, &CAutoConfigDlg::OnNewFile);
    On(DialogEvent::Command, LoadFileButton, &CAutoConfigDlg::OnLoadFile);
    On(DialogEvent::Command, SaveAsButton, &CAutoConfigDlg::OnSaveAs);
    On(DialogEvent::Command, NetDiskButton, &CAutoConfigDlg::OnImportFromNetDisk);
    On(DialogEvent::Command, AddRuleButton, &CAutoConfigDlg::OnAddRule);
    On(DialogEvent::Command, CopyRuleButton, &CAutoConfigDlg::OnCopyRule);
    On(DialogEvent::Command, DeleteRuleButton, &CAutoConfigDlg::OnDeleteRule);
    On(DialogEvent::Command, MoveUpButton, &CAutoConfigDlg::OnMoveRuleUp);
    On(DialogEvent::Command, MoveDownButton, &CAutoConfigDlg::OnMoveRuleDown);
    On(DialogEvent::Command, AddConditionButton, &CAutoConfigDlg::OnAddCondition);
    On(DialogEvent::Command, RemoveConditionButton, &CAutoConfigDlg::OnRemoveCondition);
    On(DialogEvent::ListSelection, Attributes, &CAutoConfigDlg::OnAttributeChanged);
    On(DialogEvent::TabSelection, PageTab, &CAutoConfigDlg::ShowConditionPage);
    On(DialogEvent::Command, DeleteItemsButton, &CAutoConfigDlg::OnDeleteItems);
    On(DialogEvent::Command, PickerButton, &CAutoConfigDlg::ToggleItemPicker);
    On(DialogEvent::TreeSelectionChanging, CategoryTree, &CAutoConfigDlg::OnCategoryChanging);
    On(DialogEvent::TreeSelectionChanged, CategoryTree, &CAutoConfigDlg::OnCategoryChanged);
    On(DialogEvent::ListItemChanged, RuleRows, &CAutoConfigDlg::OnRuleChanged);
    On(DialogEvent::CellClick, Grid, [this](Notice& notice) { OnGridCellClick(notice); });
    On(DialogEvent::CellChoice, Grid, [this](Notice& notice) { OnGridCellChoice(notice); });
}

void CAutoConfigDlg::EnterShortcuts()
{
    AddShortcut(Qt::Key_Insert, this, Qt::WindowShortcut, AddRuleButton);
    AddShortcut(Qt::CTRL | Qt::Key_Up, this, Qt::WindowShortcut, MoveUpButton);
    AddShortcut(Qt::CTRL | Qt::Key_Down, this, Qt::WindowShortcut, MoveDownButton);
    AddShortcut(Qt::Key_Delete, &m_grid, Qt::WidgetShortcut, DeleteItemsButton);
}

void CAutoConfigDlg::AddShortcut(const QKeySequence& keys, QWidget* place, Qt::ShortcutContext context,
                                 int command)
{
    auto* shortcut = new QShortcut(keys, place);
    shortcut->setContext(context);
    // A rule moves on while the key is held; rules and items neither come nor go by the dozen.
    shortcut->setAutoRepeat(command == MoveUpButton || command == MoveDownButton);
    connect(shortcut, &QShortcut::activated, this, [this, command] {
        if (!KeepsItsKeys(focusWidget())) Dispatch(DialogEvent::Command, command);
    });
}

void CAutoConfigDlg::DoDataExchange(dialogs::DataExchange& exchange)
{
    exchange.Control(PageTab, m_pages);
    exchange.Control(CategoryTree, m_tree);
    exchange.Control(RuleRows, m_ruleList);
    exchange.Control(Attributes, m_attributeList);
    exchange.Control(Conditions, m_conditionList);
    exchange.Control(EqualOperator, m_equalOperator);
    exchange.Control(LowerOperator, m_lowerOperator);
    exchange.Control(UpperOperator, m_upperOperator);
    exchange.Control(ValueCombo, m_value);
    exchange.Control(LowerBound, m_lowerBound);
    exchange.Control(UpperBound, m_upperBound);
}

QWidget* CAutoConfigDlg::CreateControl(const dialogs::ControlRow& row, QWidget* parent)
{
    using enum dialogs::ControlKind;
    if (row.kind == DropList) return new CTTComboBox(parent);
    if (row.kind == ListBox) {
        auto* list = new CExListBox(parent);
        list->setTextElideMode(Qt::ElideNone);
        return list;
    }
    if (row.kind != EditableCombo) return TemplateDialog::CreateControl(row, parent);
    auto* combo = new CTTComboBox(parent);
    combo->setEditable(true);
    if ((row.flags & dialogs::NoScroll) != 0)
        combo->setValidator(new FieldTextValidator(*combo->lineEdit()));
    else
        combo->setValidator(new GridTextValidator(combo));
    return combo;
}

void CAutoConfigDlg::OnInitDialog()
{
    // First, so that the members are good whatever the host does when it is asked.
    UpdateData(dialogs::DataExchange::Direction::ToControls);
    CenterOnMainFrame();
    CreateGrid();
    InitConditionPanel();
    SetUpRuleList();
    EnterShortcuts();
    for (QAbstractItemView* view : std::initializer_list<QAbstractItemView*>{m_tree, m_ruleList, &m_grid})
        widgets::ShowTipsOfCutTexts(*view);
    FillConfigTree();
    const int mode = dialogs::ProjectMode();
    if (mode == SQdDeInfo::BillMode) SetItemText(PickerButton, u"套清单>>"_s);
    if (mode == SQdDeInfo::QuotaMode) SetItemText(PickerButton, u"套定额>>"_s);
    RefreshCaption();
    update();
    m_billPicker.Create(this);
    m_quotaPicker.Create(this);
    GetDlgItem(NewFileButton)->setFocus();
}

void CAutoConfigDlg::CenterOnMainFrame()
{
    const CWnd* frame = acedGetAcadFrame();
    if (frame == nullptr) return;
    create(); // before that the window has no frame that could be measured
    MoveToMiddleOf(*frame);
    if (!widgets::FrameOf(*this).isNull()) return;
    widgets::WhenFrameIsKnown(*this, [this, mainFrame = QPointer<const CWnd>(frame)] {
        if (mainFrame) MoveToMiddleOf(*mainFrame);
    });
}

// A dialog that is coming up may not know its frame yet. That is taken to be like the main frame's, from
// which it differs by the few pixels by which a window of another kind is decorated in another way.
void CAutoConfigDlg::MoveToMiddleOf(const CWnd& mainFrame)
{
    const QMargins own = widgets::FrameOf(*this);
    const QMargins margins = own.isNull() ? widgets::FrameOf(mainFrame) : own;
    widgets::MoveFrameTo(*this,
                         widgets::CentredOn(widgets::OuterGeometry(mainFrame), size().grownBy(margins)));
}

void CAutoConfigDlg::CreateGrid()
{
    m_grid.Create(GetDlgItem(GridPlace)->geometry(), Content(), Grid,
                  GridStyle::Visible | GridStyle::Border | GridStyle::TabStop);
    m_grid.setAccessibleName(u"清单定额"_s);
    AddDlgItem(Grid, &m_grid);
    setTabOrder(GetDlgItem(PickerButton), &m_grid);
    m_grid.SetupColumns(0);
}

void CAutoConfigDlg::SetUpRuleList()
{
    m_ruleList->setHeaderLabels({u"序号"_s, u"范围"_s});
    for (int column = 0; column < m_ruleList->columnCount(); ++column) {
        m_ruleList->headerItem()->setTextAlignment(column, Qt::AlignLeft | Qt::AlignVCenter);
        m_ruleList->setColumnWidth(column, RuleColumnWidths.at(static_cast<std::size_t>(column)));
    }
    ScaleRuleColumns();
}

void CAutoConfigDlg::ScaleRuleColumns()
{
    const double scale = widgets::FontScale(font());
    const double growth = scale / std::exchange(m_ruleColumnScale, scale);
    for (int column = 0; column < m_ruleList->columnCount(); ++column)
        m_ruleList->setColumnWidth(column, qRound(m_ruleList->columnWidth(column) * growth));
}

void CAutoConfigDlg::RefreshCaption()
{
    const bool bill = dialogs::ProjectMode() == SQdDeInfo::BillMode;
    const CString mode = bill ? u"清单模式: "_s : u"定额模式: "_s;
    setWindowTitle(u"自动套配置-[ "_s + mode + m_presenter->GetCurConfig() + u" ]"_s);
}

void CAutoConfigDlg::OnLayout()
{
    if (m_ruleList == nullptr) return;
    m_grid.setGeometry(GetDlgItem(GridPlace)->geometry());
    ScaleRuleColumns();
}

void CAutoConfigDlg::OnGridNotify(const GridNotification& notification)
{
    Notice notice;
    notice.row = notification.row;
    notice.column = notification.column;
    notice.text = notification.text;
    if (notification.code == NM_CLICK) Dispatch(DialogEvent::CellClick, Grid, notice);
    if (notification.code == CellChoiceMade) Dispatch(DialogEvent::CellChoice, Grid, notice);
}
