#include "dialogs/CAutoConfigDlg.h"

#include "dialogs/AutoConfigIds.h"
#include "dialogs/CutTextTips.h"
#include "dialogs/DialogTemplates.h"
#include "dialogs/GridEditors.h"
#include "dialogs/ListControls.h"
#include "dialogs/ProjectMode.h"
#include "dialogs/TreeControl.h"
#include "dialogs/secondary/CExListBox.h"
#include "dialogs/secondary/CTTComboBox.h"
#include "host/HostWindows.h"
#include "host/UserMessage.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QSessionManager>
#include <QtGui/QShortcut>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QTabWidget>

#include <algorithm>
#include <array>
#include <initializer_list>

using namespace Qt::StringLiterals;
using dialogs::DialogEvent;
using dialogs::Notice;
using namespace dialogs::autoconfig;

namespace {

/// Widths of the rule list's columns in pixels, at fonts up to `PlainFontSize` points.
constexpr std::array RuleColumnWidths{40, 450};
constexpr double PlainFontSize = 9;

} // namespace

CAutoConfigDlg::CAutoConfigDlg(const CString& configFile, CWnd* parent)
    : TemplateDialog(dialogs::templates::AutoConfig(), parent),
      m_presenter(std::make_unique<CQdDeConfigPresenter>(configFile))
{
    m_billPicker.SetShowGetQdNumDlg(false);
    EnterEvents();
    connect(&m_grid, &CGridCtrl::Notify, this, &CAutoConfigDlg::OnGridNotify);
    connect(qGuiApp, &QGuiApplication::commitDataRequest, this, [this](QSessionManager& session) {
        if (isVisible() && !RunGuarded([this] { FlushAndSave(); })) session.cancel();
    });
}

CAutoConfigDlg::~CAutoConfigDlg()
{
    m_presenter.reset();
}

// Two events of the dialog have no handler because nothing happens on them: the end of an in-place edit
// (column 2 reaches the tree by the flush, see the class comment), and a press of the explanation, which only
// the wizard form shows.
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
    const auto enter = [this](QKeySequence keys, QWidget* place, Qt::ShortcutContext context, int command) {
        auto* shortcut = new QShortcut(keys, place);
        shortcut->setContext(context);
        connect(shortcut, &QShortcut::activated, this,
                [this, command] { Dispatch(DialogEvent::Command, command); });
    };
    enter(Qt::Key_Insert, this, Qt::WindowShortcut, AddRuleButton);
    enter(Qt::CTRL | Qt::Key_Up, this, Qt::WindowShortcut, MoveUpButton);
    enter(Qt::CTRL | Qt::Key_Down, this, Qt::WindowShortcut, MoveDownButton);
    // Not while a cell is edited: there the key belongs to the text.
    enter(Qt::Key_Delete, &m_grid, Qt::WidgetShortcut, DeleteItemsButton);
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
    combo->setValidator(new GridTextValidator(combo));
    return combo;
}

void CAutoConfigDlg::OnInitDialog()
{
    CenterOnMainFrame();
    CreateGrid();
    InitConditionPanel();
    SetUpRuleList();
    EnterShortcuts();
    for (QAbstractItemView* view : std::initializer_list<QAbstractItemView*>{&Tree(), &RuleList(), &m_grid})
        dialogs::ShowTipsOfCutTexts(*view);
    FillConfigTree();
    const int mode = dialogs::ProjectMode();
    if (mode == SQdDeInfo::BillMode) SetDlgItemText(PickerButton, u"套清单>>"_s);
    if (mode == SQdDeInfo::QuotaMode) SetDlgItemText(PickerButton, u"套定额>>"_s);
    RefreshCaption();
    update();
    m_billPicker.Create(this);
    m_quotaPicker.Create(this);
}

void CAutoConfigDlg::CenterOnMainFrame()
{
    const CWnd* frame = acedGetAcadFrame();
    if (frame == nullptr) return;
    const CRect outer = frame->window()->frameGeometry();
    const CRect own = frameGeometry();
    move(outer.width() / 2 - own.width() / 2 + outer.left(),
         outer.height() / 2 - own.height() / 2 + outer.top());
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
    QTreeWidget& list = RuleList();
    list.setHeaderLabels({u"序号"_s, u"范围"_s});
    list.headerItem()->setTextAlignment(0, Qt::AlignLeft | Qt::AlignVCenter);
    list.headerItem()->setTextAlignment(1, Qt::AlignLeft | Qt::AlignVCenter);
    SizeRuleColumns();
}

void CAutoConfigDlg::SizeRuleColumns()
{
    QHeaderView& header = *RuleList().header();
    const double scale = std::max(1.0, QFontInfo(font()).pointSizeF() / PlainFontSize);
    for (int column = 0; column < header.count(); ++column)
        header.resizeSection(column, qRound(RuleColumnWidths.at(static_cast<std::size_t>(column)) * scale));
}

void CAutoConfigDlg::RefreshCaption()
{
    const bool bill = dialogs::ProjectMode() == SQdDeInfo::BillMode;
    const CString mode = bill ? u"清单模式: "_s : u"定额模式: "_s;
    setWindowTitle(u"自动套配置-[ "_s + mode + m_presenter->GetCurConfig() + u" ]"_s);
}

void CAutoConfigDlg::OnLayout()
{
    if (m_grid.parentWidget() == nullptr) return;
    m_grid.setGeometry(GetDlgItem(GridPlace)->geometry());
    SizeRuleColumns();
}

void CAutoConfigDlg::OnGridNotify(const GridNotification& notification)
{
    Notice notice;
    notice.row = notification.row;
    notice.column = notification.column;
    notice.text = notification.text;
    if (notification.code == NM_CLICK) Dispatch(DialogEvent::CellClick, Grid, notice);
    if (notification.code == CellChoiceMade) Dispatch(DialogEvent::CellChoice, Grid, notice);
    if (notification.code == LVN_ENDLABELEDIT) Dispatch(DialogEvent::CellEdited, Grid, notice);
}

void CAutoConfigDlg::FlushAndSave()
{
    FlushGrid();
    m_presenter->Save();
}

// The result of the save is not looked at; what it raises keeps the dialog open.
void CAutoConfigDlg::SaveAndHidePickers()
{
    FlushAndSave();
    m_billPicker.ShowWindow(false);
    m_quotaPicker.ShowWindow(false);
}

void CAutoConfigDlg::OnCancel()
{
    SaveAndHidePickers();
    TemplateDialog::OnCancel();
}

void CAutoConfigDlg::OnClose()
{
    SaveAndHidePickers();
    TemplateDialog::OnClose();
}

dialogs::TreeControl& CAutoConfigDlg::Tree() const
{
    return Item<dialogs::TreeControl>(CategoryTree);
}
QTreeWidget& CAutoConfigDlg::RuleList() const
{
    return Item<QTreeWidget>(RuleRows);
}
QListWidget& CAutoConfigDlg::AttributeList() const
{
    return Item<QListWidget>(Attributes);
}
QListWidget& CAutoConfigDlg::ConditionList() const
{
    return Item<QListWidget>(Conditions);
}
QTabWidget& CAutoConfigDlg::Pages() const
{
    return Item<QTabWidget>(PageTab);
}
CTTComboBox& CAutoConfigDlg::Combo(int id) const
{
    return Item<CTTComboBox>(id);
}
