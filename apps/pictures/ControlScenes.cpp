#include "ControlScenes.h"

#include "dialogs/MyGridCtrl.h"
#include "dialogs/secondary/CExListBox.h"
#include "dialogs/secondary/CTTComboBox.h"
#include "widgets/ListControls.h"

#include <QtCore/QCoreApplication>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr CRect GridPlace{10, 10, 700, 220};

/// A bill row is dark on the grid's own background; a quota row belongs to the one above it.
void AddRow(MyGridCtrl& grid, const CStringArray& texts, bool isQuota)
{
    const int row = grid.InsertOneprop(grid.GetRowCount(), texts, nullptr);
    grid.SetItemData(row, 1, isQuota ? 1 : 0);
}

std::unique_ptr<QWidget> MakeGrid(PictureHost& host, SQdDeInfo::EQdDeMode mode, int attType, bool edited)
{
    host.SetMode(mode);
    auto window = std::make_unique<QWidget>();
    window->resize(GridPlace.width() + 20, GridPlace.height() + 20);
    auto* grid = new MyGridCtrl;
    grid->Create(GridPlace, window.get(), 50002, GridStyle::Visible | GridStyle::Border | GridStyle::TabStop);
    grid->SetupColumns(attType);
    if (mode == SQdDeInfo::BillMode)
        AddRow(*grid, {u"030801001001"_s, u"镀锌钢管"_s, u"m"_s, u"长度"_s, u"是"_s}, false);
    AddRow(*grid,
           {u"8-87"_s, u"室内管道 镀锌钢管（螺纹连接） 公称直径15mm以内"_s, u"10m"_s, u"长度"_s, u"否"_s},
           true);
    AddRow(*grid, {u"8-88"_s, u"室内管道 公称直径20mm以内"_s, u"10m"_s, u"长度×1.02"_s, u"否"_s}, true);
    grid->SetSelectedRange(1, 1, 1, grid->GetColumnCount() - 1);
    grid->SetFocusCell(1, 2);
    if (edited) grid->edit(grid->currentIndex());
    return window;
}

std::unique_ptr<QWidget> MakeCombos()
{
    auto window = std::make_unique<QWidget>();
    auto* column = new QVBoxLayout(window.get());
    for (const auto& [editable, enabled] :
         {std::pair{false, true}, {true, true}, {false, false}, {true, false}}) {
        auto* combo = new CTTComboBox(window.get());
        combo->setEditable(editable);
        widgets::AddString(*combo, u"一个比组合框的宽度还要长的取值"_s);
        widgets::SetCurSel(*combo, 0);
        combo->setEnabled(enabled);
        combo->setFixedWidth(120);
        column->addWidget(combo);
    }
    auto* list = new CExListBox(window.get());
    for (const CString& line : {u"公称直径(mm)"_s, u"一个比列表框的宽度还要长的属性"_s})
        widgets::AddString(*list, line);
    widgets::SetCurSel(*list, 1);
    list->setFixedSize(120, 60);
    column->addWidget(list);
    return window;
}

/// The middle of a long item may lie outside of its view.
void RestOn(QAbstractItemView& view, const QModelIndex& item)
{
    Rest(*view.viewport(), (view.visualRect(item) & view.viewport()->rect()).center());
}

void OpenList(QWidget& window)
{
    // The list of a combo that cannot be edited grows with its entries.
    constexpr qsizetype Editable = 1;
    auto* combo = window.findChildren<CTTComboBox*>().at(Editable);
    combo->showPopup();
    QCoreApplication::processEvents(); // the list gets its place, and its entries theirs
    RestOn(*combo->view(), combo->model()->index(0, 0));
}

void RestOnEdit(QWidget& window)
{
    QLineEdit* edit = window.findChild<QLineEdit*>();
    Rest(*edit, edit->rect().center());
}

void RestOnLine(QWidget& window)
{
    auto* list = window.findChild<CExListBox*>();
    RestOn(*list, list->model()->index(1, 0));
}

/// A cell with choices in a grid. Its list opens by itself once the cell is edited.
void OpenChoices(QWidget& window)
{
    constexpr int UnitColumn = 2; // of the cells that can be selected
    auto* grid = window.findChild<MyGridCtrl*>();
    grid->edit(grid->model()->index(0, UnitColumn));
}

} // namespace

std::vector<Scene> ControlScenes(PictureHost& host)
{
    return {
        {u"grid-bill-six-columns"_s, [&host] { return MakeGrid(host, SQdDeInfo::BillMode, 1, false); }},
        {u"grid-bill-five-columns"_s, [&host] { return MakeGrid(host, SQdDeInfo::BillMode, 0, false); }},
        {u"grid-quota-edited"_s, [&host] { return MakeGrid(host, SQdDeInfo::QuotaMode, 1, true); }},
        {u"grid-choices"_s, [&host] { return MakeGrid(host, SQdDeInfo::BillMode, 1, false); }, OpenChoices},
        {u"combos-and-list"_s, MakeCombos},
        {u"combo-list-tip"_s, MakeCombos, OpenList, true},
        {u"combo-edit-tip"_s, MakeCombos, RestOnEdit, true},
        {u"list-tip"_s, MakeCombos, RestOnLine, true},
    };
}
