#include "dialogs/grid/GridUser.h"

#include <QtCore/QPointer>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLineEdit>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using test::GridUser;

namespace {

TEST(CGridCtrl, CreateMakesAVisibleChildThatCarriesItsId)
{
    GridUser user;
    EXPECT_EQ(user.Grid().parentWidget(), &user.Window());
    EXPECT_EQ(user.Grid().objectName(), u"id50002"_s);
    EXPECT_EQ(user.Grid().geometry(), QRect(10, 10, 600, 280));
    EXPECT_TRUE(user.Grid().isVisible());
    EXPECT_NE(user.Grid().frameStyle(), int(QFrame::NoFrame));
}

TEST(CGridCtrl, StyleDecidesOnVisibilityBorderAndTabStop)
{
    QWidget window;
    CGridCtrl grid;
    grid.Create({0, 0, 10, 10}, &window, 1, {});
    EXPECT_TRUE(grid.isHidden());
    EXPECT_EQ(grid.frameStyle(), int(QFrame::NoFrame));
    EXPECT_FALSE(grid.focusPolicy() & Qt::TabFocus & ~Qt::ClickFocus);
}

TEST(CGridCtrl, TextPastTheLastRowIsEmpty)
{
    GridUser user(1, 2);
    EXPECT_EQ(user.Grid().GetItemText(2, 1), u"r2c1"_s);
    EXPECT_EQ(user.Grid().GetItemText(3, 1), CString());
    EXPECT_EQ(user.Grid().GetItemText(-1, 1), CString());
}

TEST(CGridCtrl, ItemDataPastTheEndIsZero)
{
    GridUser user(1, 1);
    EXPECT_TRUE(user.Grid().SetItemData(1, 1, -5));
    EXPECT_EQ(user.Grid().GetItemData(1, 1), -5);
    EXPECT_EQ(user.Grid().GetItemData(1, 2), 0);
    EXPECT_EQ(user.Grid().GetItemData(2, 1), 0);
    EXPECT_FALSE(user.Grid().SetItemData(2, 1, 3));
}

TEST(CGridCtrl, ItemDataOfFixedCellsIsKept)
{
    GridUser user(1, 1);
    user.Grid().SetItemData(1, 0, 42);
    EXPECT_EQ(user.Grid().GetItemData(1, 0), 42);
}

TEST(CGridCtrl, WritingPastTheEndDoesNothing)
{
    GridUser user(0, 1);
    EXPECT_FALSE(user.Grid().SetItemText(2, 1, u"x"_s));
    EXPECT_FALSE(user.Grid().SetItemText(1, 5, u"x"_s));
    EXPECT_FALSE(user.Grid().SetItemState(2, 1, ReadOnlyState));
    EXPECT_FALSE(user.Grid().GetCell(2, 1).has_value());
}

TEST(CGridCtrl, MaskDecidesWhatSetItemWrites)
{
    GridUser user(1, 1);
    user.Grid().SetItem({1, 2, GridItemFormat, GridFormatCenter, u"ignored"_s});
    EXPECT_EQ(user.Grid().GetItemText(1, 2), u"r1c2"_s);
    user.Grid().SetItem({1, 2, GridItemText, 0, u"new"_s});
    EXPECT_EQ(user.Grid().GetItemText(1, 2), u"new"_s);
    const int alignment = user.Grid().model()->index(0, 1).data(Qt::TextAlignmentRole).toInt();
    EXPECT_TRUE(alignment & Qt::AlignHCenter);
}

TEST(CGridCtrl, RowIsInsertedInFrontOfAnother)
{
    GridUser user(1, 2);
    EXPECT_EQ(user.Grid().InsertOneprop(2, {u"new"_s}, nullptr), 2);
    EXPECT_EQ(user.Grid().GetItemText(1, 1), u"r1c1"_s);
    EXPECT_EQ(user.Grid().GetItemText(2, 1), u"new"_s);
    EXPECT_EQ(user.Grid().GetItemText(3, 1), u"r2c1"_s);
}

TEST(CGridCtrl, RowIsNeverInsertedAboveTheHeaderNorBeyondTheEnd)
{
    GridUser user(1, 1);
    EXPECT_EQ(user.Grid().InsertOneprop(0, {u"first"_s}, nullptr), 1);
    EXPECT_EQ(user.Grid().InsertOneprop(99, {u"last"_s}, nullptr), 3);
    EXPECT_EQ(user.Grid().GetItemText(0, 1), u"清单/定额编号"_s);
}

TEST(CGridCtrl, OwnerOfAnInsertedRowBecomesItsItemData)
{
    GridUser user(1, 0);
    int owner = 0;
    user.Grid().InsertOneprop(1, {}, &owner);
    user.Grid().InsertOneprop(2, {}, nullptr);
    EXPECT_EQ(user.Grid().GetItemData(1, 0), reinterpret_cast<std::intptr_t>(&owner));
    EXPECT_EQ(user.Grid().GetItemData(2, 0), 0);
}

TEST(CGridCtrl, DeleteNonFixedRowsKeepsTheHeaderAndDropsTheSelection)
{
    GridUser user;
    user.Click(2, 1);
    user.Grid().DeleteNonFixedRows();
    EXPECT_EQ(user.Grid().GetRowCount(), 1);
    EXPECT_EQ(user.Grid().GetItemText(0, 3), u"单位"_s);
    EXPECT_FALSE(user.Grid().IsValid(user.Grid().GetSelectedCellRange()));
}

TEST(CGridCtrl, DeleteNonFixedRowsDropsASelectedHeader)
{
    GridUser user;
    user.Grid().SetSelectedRange(0, 1, 0, 5);
    user.Grid().SetFocusCell(0, 1);
    user.Grid().DeleteNonFixedRows();
    EXPECT_EQ(user.Grid().GetSelectedCellRange(), GridRange());
    EXPECT_EQ(user.Grid().GetFocusCell(), GridCellId());
}

TEST(CGridCtrl, FixedRowTakesPartInTheNumbering)
{
    GridUser user(1, 2);
    EXPECT_EQ(user.Grid().GetRowCount(), 3);
    EXPECT_EQ(user.Grid().model()->index(0, 0).data().toString(), user.Grid().GetItemText(1, 1));
    EXPECT_EQ(user.Grid().model()->headerData(0, Qt::Horizontal).toString(), user.Grid().GetItemText(0, 1));
}

TEST(CGridCtrl, WithoutFixedRowsAndColumnsEveryCellIsAData)
{
    GridUser user(1, 1);
    user.Grid().SetFixedRowCount(0);
    user.Grid().SetFixedColumnCount(0);
    EXPECT_EQ(user.Grid().model()->index(1, 1).data().toString(), u"r1c1"_s);
    EXPECT_TRUE(user.Grid().horizontalHeader()->isHidden());
    EXPECT_TRUE(user.Grid().verticalHeader()->isHidden());
}

TEST(CGridCtrl, RangeIsValidOnlyInsideAndInOrder)
{
    GridUser user(1, 2);
    const MyGridCtrl& grid = user.Grid();
    EXPECT_TRUE(grid.IsValid({0, 0, 2, 5}));
    EXPECT_FALSE(grid.IsValid({0, 0, 3, 5}));
    EXPECT_FALSE(grid.IsValid({0, 0, 2, 6}));
    EXPECT_FALSE(grid.IsValid({2, 1, 1, 1}));
    EXPECT_FALSE(grid.IsValid(GridRange()));
}

TEST(CGridCtrl, CellKnowsWhetherItIsSelected)
{
    GridUser user;
    user.Grid().SetSelectedRange(2, 1, 2, 3);
    EXPECT_TRUE(user.Grid().GetCell(2, 3)->IsSelected());
    EXPECT_FALSE(user.Grid().GetCell(2, 4)->IsSelected());
    EXPECT_FALSE(user.Grid().GetCell(2, 0)->IsSelected());
}

TEST(CGridCtrl, SelectedRangeReplacesTheFormerOne)
{
    GridUser user;
    user.Grid().SetSelectedRange(1, 1, 2, 5);
    user.Grid().SetSelectedRange(4, 1, 4, 5, true);
    EXPECT_EQ(user.Grid().GetSelectedCellRange(), (GridRange{4, 1, 4, 5}));
}

TEST(CGridCtrl, SelectedRangeIsCutToTheGrid)
{
    GridUser user(1, 2);
    user.Grid().SetSelectedRange(2, 1, 9, 9);
    EXPECT_EQ(user.Grid().GetSelectedCellRange(), (GridRange{2, 1, 2, 5}));
    user.Grid().SetSelectedRange(7, 1, 7, 5);
    EXPECT_FALSE(user.Grid().IsValid(user.Grid().GetSelectedCellRange()));
}

TEST(CGridCtrl, SelectedRangeMayReachIntoFixedCells)
{
    GridUser user;
    user.Grid().SetSelectedRange(0, 0, 2, 2);
    EXPECT_EQ(user.Grid().GetSelectedCellRange(), (GridRange{0, 0, 2, 2}));
    EXPECT_TRUE(user.Grid().IsSelected(0, 2));
    EXPECT_TRUE(user.Grid().IsSelected(2, 0));
    EXPECT_FALSE(user.Grid().IsSelected(3, 0));
}

TEST(CGridCtrl, SelectedRangeWithoutSelectingCellsDropsTheFormerOne)
{
    GridUser user;
    user.Grid().SetSelectedRange(1, 1, 1, 5);
    user.Grid().SetSelectedRange(2, 1, 2, 5, false, false);
    EXPECT_FALSE(user.Grid().IsValid(user.Grid().GetSelectedCellRange()));
}

TEST(CGridCtrl, SelectedHeaderGivesWayToAClick)
{
    GridUser user;
    user.Grid().SetSelectedRange(0, 1, 0, 5);
    user.Click(3, 1);
    EXPECT_EQ(user.Grid().GetSelectedCellRange(), (GridRange{3, 1, 3, 1}));
}

TEST(CGridCtrl, SelectedRowAndHeaderShowInTheirColour)
{
    GridUser user;
    const QColor plain = user.Grid().horizontalHeader()->grab().toImage().pixelColor(40, 2);
    user.Grid().SetSelectedRange(0, 1, 0, 5);
    EXPECT_NE(user.Grid().horizontalHeader()->grab().toImage().pixelColor(40, 2), plain);
    const QImage before = user.Grid().verticalHeader()->grab().toImage();
    user.Grid().SetSelectedRange(2, 1, 2, 5);
    const QImage after = user.Grid().verticalHeader()->grab().toImage();
    const QPoint inRow(3, user.RectOf(2, 1).center().y());
    EXPECT_NE(after.pixelColor(inRow), before.pixelColor(inRow));
}

TEST(CGridCtrl, FocusCellMovesWithoutTheSelection)
{
    GridUser user;
    user.Grid().SetSelectedRange(2, 1, 3, 5);
    user.Grid().SetFocusCell(5, 1);
    EXPECT_EQ(user.Grid().GetFocusCell(), (GridCellId{5, 1}));
    EXPECT_EQ(user.Grid().GetSelectedCellRange(), (GridRange{2, 1, 3, 5}));
}

TEST(CGridCtrl, FocusCellOutsideTheGridChangesNothing)
{
    GridUser user(1, 2);
    user.Grid().SetFocusCell(2, 1);
    user.Grid().SetFocusCell(3, 1);
    EXPECT_EQ(user.Grid().GetFocusCell(), (GridCellId{2, 1}));
}

TEST(CGridCtrl, FocusCellMayBeFixedAndOutlastsTheFocus)
{
    GridUser user;
    user.Window().setFocus();
    user.Grid().SetSelectedRange(0, 1, 0, 5);
    user.Grid().SetFocusCell(0, 1);
    user.Grid().clearFocus();
    user.Grid().setFocus();
    EXPECT_EQ(user.Grid().GetFocusCell(), (GridCellId{0, 1}));
    EXPECT_EQ(user.Grid().GetSelectedCellRange(), (GridRange{0, 1, 0, 5}));
}

TEST(CGridCtrl, DownFromTheHeaderReachesTheFirstDataRow)
{
    GridUser user;
    user.Grid().SetSelectedRange(0, 1, 0, 5);
    user.Grid().SetFocusCell(0, 1);
    user.Press(Qt::Key_Down);
    EXPECT_EQ(user.Grid().GetFocusCell(), (GridCellId{1, 1}));
    EXPECT_EQ(user.Grid().GetSelectedCellRange(), (GridRange{1, 1, 1, 1}));
}

TEST(CGridCtrl, ShiftExtendsFromTheFocusCellSetByCode)
{
    GridUser user;
    user.Click(1, 1);
    user.Grid().SetFocusCell(3, 1);
    user.Press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(user.Grid().GetSelectedCellRange(), (GridRange{3, 1, 4, 1}));
}

TEST(CGridCtrl, OwnBackgroundReplacesTheGridsAndKeepsTheTextDark)
{
    GridUser user;
    user.Grid().GetCell(1, 1)->SetBackClr(0xFFFF80);
    const QModelIndex bill = user.Grid().model()->index(0, 0);
    EXPECT_EQ(bill.data(Qt::BackgroundRole).value<QColor>(), QColor(0x80, 0xFF, 0xFF));
    EXPECT_EQ(bill.data(Qt::ForegroundRole).value<QColor>(), QColor(Qt::black));
}

TEST(CGridCtrl, TextOnADarkBackgroundIsLight)
{
    GridUser user;
    user.Grid().GetCell(1, 1)->SetBackClr(0x401000);
    EXPECT_EQ(user.Grid().model()->index(0, 0).data(Qt::ForegroundRole).value<QColor>(), QColor(Qt::white));
}

TEST(CGridCtrl, RowHeightOfADataRowCanBeSet)
{
    GridUser user;
    user.Grid().SetRowHeight(2, 50);
    EXPECT_EQ(user.Grid().rowHeight(1), 50);
}

TEST(CGridCtrl, NarrowedColumnWrapsItsCaptionIntoAHigherHeader)
{
    GridUser user;
    const int before = user.Grid().horizontalHeader()->height();
    user.Grid().SetColumnWidth(2, 40);
    EXPECT_GT(user.Grid().horizontalHeader()->height(), before);
    EXPECT_EQ(user.Grid().horizontalHeader()->height(), user.Grid().GetFixedRowHeight() + 2);
}

TEST(CGridCtrl, ThousandGridsComeAndGoWithOpenEdits)
{
    QWidget window;
    const int children = static_cast<int>(window.findChildren<QObject*>().size());
    for (int round = 0; round < 1000; ++round) {
        auto grid = std::make_unique<CEnterGrid>();
        grid->Create({0, 0, 100, 100}, &window, 1, GridStyle::Visible);
        grid->SetRowCount(3);
        grid->SetColumnCount(3);
        grid->SetFocusCell(1, 1);
        grid->edit(grid->currentIndex());
        const QPointer<QLineEdit> line = grid->findChild<QLineEdit*>();
        ASSERT_NE(line, nullptr);
        grid.reset();
        ASSERT_EQ(line, nullptr);
    }
    EXPECT_EQ(window.findChildren<QObject*>().size(), children);
}

} // namespace
