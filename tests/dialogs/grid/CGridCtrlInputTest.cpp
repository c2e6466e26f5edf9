#include "dialogs/grid/GridUser.h"

#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using test::GridUser;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

TEST(CGridCtrlInput, ClickIsToldWithItsCell)
{
    GridUser user;
    user.Click(2, 4);
    ASSERT_THAT(user.Told(), SizeIs(1));
    EXPECT_EQ(user.Told()[0].code, -2);
    EXPECT_EQ(user.Told()[0].row, 2);
    EXPECT_EQ(user.Told()[0].column, 4);
}

TEST(CGridCtrlInput, ClickOnAFixedCellIsToldToo)
{
    GridUser user;
    const QHeaderView* top = user.Grid().horizontalHeader();
    QTest::mouseClick(top->viewport(), Qt::LeftButton, {}, QPoint(top->sectionViewportPosition(2) + 20, 5));
    const QHeaderView* side = user.Grid().verticalHeader();
    QTest::mouseClick(side->viewport(), Qt::LeftButton, {}, QPoint(5, side->sectionViewportPosition(1) + 10));
    const auto told = user.Told(NM_CLICK);
    ASSERT_THAT(told, SizeIs(2));
    EXPECT_EQ(told[0].row, 0);
    EXPECT_EQ(told[0].column, 3);
    EXPECT_EQ(told[1].row, 2);
    EXPECT_EQ(told[1].column, 0);
}

TEST(CGridCtrlInput, ClickOnAHeadingSelectsNothing)
{
    GridUser user;
    user.Click(2, 1);
    const QHeaderView* top = user.Grid().horizontalHeader();
    QTest::mouseClick(top->viewport(), Qt::LeftButton, {}, QPoint(top->sectionViewportPosition(2) + 20, 5));
    EXPECT_EQ(user.Grid().GetSelectedCellRange(), (GridRange{2, 1, 2, 1}));
}

TEST(CGridCtrlInput, PressWhereNoCellIsTakesTheSelectionOfTheHeaderAway)
{
    GridUser user(1, 1);
    user.Grid().SetSelectedRange(0, 1, 0, 5);
    QWidget* cells = user.Grid().viewport();
    QTest::mouseClick(cells, Qt::LeftButton, {}, cells->rect().bottomRight() - QPoint(5, 5));
    EXPECT_FALSE(user.Grid().IsSelected(0, 3));
    EXPECT_FALSE(user.Grid().IsValid(user.Grid().GetSelectedCellRange()));
}

TEST(CGridCtrlInput, DragSelectsARangeAndIsNoClick)
{
    GridUser user;
    user.Drag({2, 1}, {4, 3});
    EXPECT_EQ(user.Grid().GetSelectedCellRange(), (GridRange{2, 1, 4, 3}));
    EXPECT_THAT(user.Told(), IsEmpty());
}

TEST(CGridCtrlInput, ShiftClickExtendsTheSelection)
{
    GridUser user;
    user.Click(2, 1);
    user.Click(5, 2, Qt::ShiftModifier);
    EXPECT_EQ(user.Grid().GetSelectedCellRange(), (GridRange{2, 1, 5, 2}));
}

TEST(CGridCtrlInput, ShiftAndArrowsExtendTheSelection)
{
    GridUser user;
    user.Click(2, 1);
    user.Press(Qt::Key_Down, Qt::ShiftModifier);
    user.Press(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(user.Grid().GetSelectedCellRange(), (GridRange{2, 1, 3, 2}));
}

TEST(CGridCtrlInput, TabLeavesTheGrid)
{
    GridUser user;
    QPushButton next(&user.Window());
    next.show();
    QWidget::setTabOrder(&user.Grid(), &next);
    user.Click(1, 1);
    user.Press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), &next);
}

TEST(CGridCtrlInput, EditOpensByF2DoubleClickAndTyping)
{
    GridUser user;
    user.Click(1, 2);
    EXPECT_EQ(user.Line(), nullptr);
    user.Press(Qt::Key_F2);
    ASSERT_NE(user.Line(), nullptr);
    EXPECT_EQ(user.Line()->text(), u"r1c2"_s);
    user.Press(Qt::Key_Escape);
    EXPECT_EQ(user.Line(), nullptr);

    user.DoubleClick(2, 2);
    EXPECT_NE(user.Line(), nullptr);
    user.Press(Qt::Key_Escape);

    user.Click(3, 2);
    user.Type(u"新"_s);
    ASSERT_NE(user.Line(), nullptr);
    EXPECT_EQ(user.Line()->text(), u"新"_s);
}

TEST(CGridCtrlInput, EndOfAnEditIsToldAfterTheTextStandsInTheCell)
{
    GridUser user;
    CString seen;
    QObject::connect(&user.Grid(), &CGridCtrl::Notify, &user.Window(), [&](const GridNotification& told) {
        if (told.code == LVN_ENDLABELEDIT) seen = user.Grid().GetItemText(told.row, told.column);
    });
    user.Click(2, 2);
    user.Type(u"名称"_s);
    EXPECT_EQ(user.Grid().GetItemText(2, 2), u"r2c2"_s);
    user.Press(Qt::Key_Return);
    EXPECT_EQ(seen, u"名称"_s);
    const auto told = user.Told(-176);
    ASSERT_THAT(told, SizeIs(1));
    EXPECT_EQ(told[0].row, 2);
    EXPECT_EQ(told[0].column, 2);
    EXPECT_EQ(told[0].text, u"名称"_s);
}

TEST(CGridCtrlInput, EscapeEndsAnEditWithTheOldText)
{
    GridUser user;
    user.Click(2, 2);
    user.Type(u"x"_s);
    user.Press(Qt::Key_Escape);
    EXPECT_EQ(user.Grid().GetItemText(2, 2), u"r2c2"_s);
    ASSERT_THAT(user.Told(LVN_ENDLABELEDIT), SizeIs(1));
    EXPECT_EQ(user.Told(LVN_ENDLABELEDIT)[0].text, u"r2c2"_s);
}

TEST(CGridCtrlInput, EnterEndsAnEditAndStaysOnItsCell)
{
    GridUser user;
    user.Click(2, 2);
    user.Type(u"x"_s);
    user.Press(Qt::Key_Return);
    EXPECT_EQ(user.Line(), nullptr);
    EXPECT_EQ(user.Grid().GetItemText(2, 2), u"x"_s);
    EXPECT_EQ(user.Grid().GetFocusCell(), (GridCellId{2, 2}));
}

TEST(CGridCtrlInput, TabEndsAnEditAndMovesOnWithoutOpeningTheNext)
{
    GridUser user;
    user.Click(2, 2);
    user.Type(u"x"_s);
    user.Press(Qt::Key_Tab);
    EXPECT_EQ(user.Grid().GetItemText(2, 2), u"x"_s);
    EXPECT_EQ(user.Grid().GetFocusCell(), (GridCellId{2, 3}));
    EXPECT_THAT(user.OpenChoices(), IsEmpty());
    user.Grid().SetFocusCell(2, 2);
    user.Press(Qt::Key_F2);
    user.Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(user.Grid().GetFocusCell(), (GridCellId{2, 1}));
}

TEST(CGridCtrlInput, FocusElsewhereEndsAnEditWithItsText)
{
    GridUser user;
    QPushButton other(&user.Window());
    other.show();
    user.Click(2, 2);
    user.Type(u"x"_s);
    other.setFocus();
    EXPECT_EQ(user.Grid().GetItemText(2, 2), u"x"_s);
    EXPECT_THAT(user.Told(LVN_ENDLABELEDIT), SizeIs(1));
}

TEST(CGridCtrlInput, ClickOnAnotherCellEndsAnEditWithItsText)
{
    GridUser user;
    user.Click(2, 2);
    user.Type(u"x"_s);
    user.Click(4, 1);
    EXPECT_EQ(user.Grid().GetItemText(2, 2), u"x"_s);
    EXPECT_EQ(user.Line(), nullptr);
    EXPECT_THAT(user.Told(LVN_ENDLABELEDIT), SizeIs(1));
}

TEST(CGridCtrlInput, FocusCellSetByCodeTakesAnOpenEditOver)
{
    GridUser user;
    user.Click(3, 2);
    user.Type(u"x"_s);
    user.Grid().SetFocusCell(1, 1);
    EXPECT_EQ(user.Grid().GetItemText(3, 2), u"x"_s);
    ASSERT_THAT(user.Told(LVN_ENDLABELEDIT), SizeIs(1));
    EXPECT_EQ(user.Told(LVN_ENDLABELEDIT)[0].row, 3);
    GridUser::Settle();
    EXPECT_EQ(user.Line(), nullptr);
}

TEST(CGridCtrlInput, FocusCellSetToTheEditedCellLeavesTheEditOpen)
{
    GridUser user;
    user.Click(3, 2);
    user.Type(u"x"_s);
    user.Grid().SetFocusCell(3, 2);
    EXPECT_NE(user.Line(), nullptr);
}

TEST(CGridCtrlInput, DeletingTheRowsDropsAnOpenEditSilently)
{
    GridUser user;
    user.Click(3, 2);
    user.Type(u"x"_s);
    user.Grid().DeleteNonFixedRows();
    GridUser::Settle();
    EXPECT_EQ(user.Line(), nullptr);
    EXPECT_THAT(user.Told(LVN_ENDLABELEDIT), IsEmpty());
    user.Grid().InsertOneprop(1, {u"a"_s, u"b"_s}, nullptr);
    user.Grid().setFocus();
    user.Click(1, 2);
    user.Press(Qt::Key_F2);
    ASSERT_NE(user.Line(), nullptr);
    EXPECT_EQ(user.Line()->text(), u"b"_s);
}

TEST(CGridCtrlInput, ParentMayRebuildTheGridWhenAnEditEnds)
{
    GridUser user;
    QObject::connect(&user.Grid(), &CGridCtrl::Notify, &user.Window(), [&](const GridNotification& told) {
        if (told.code == LVN_ENDLABELEDIT) user.Grid().DeleteAllItems();
    });
    user.Click(3, 2);
    user.Type(u"x"_s);
    user.Grid().SetFocusCell(1, 1);
    GridUser::Settle();
    EXPECT_EQ(user.Grid().GetRowCount(), 0);
    EXPECT_EQ(user.Grid().GetFocusCell(), GridCellId());
}

TEST(CGridCtrlInput, ReadOnlyCellDoesNotOpen)
{
    GridUser user;
    user.Grid().SetItemState(1, 1, ReadOnlyState);
    user.DoubleClick(1, 1);
    EXPECT_EQ(user.Line(), nullptr);
    user.Press(Qt::Key_F2);
    EXPECT_EQ(user.Line(), nullptr);
    user.Type(u"x"_s);
    EXPECT_EQ(user.Line(), nullptr);
    EXPECT_EQ(user.Grid().GetItemText(1, 1), u"r1c1"_s);
}

TEST(CGridCtrlInput, ReadOnlyChoiceCellDoesNotOpen)
{
    GridUser user;
    user.Grid().SetItemState(1, 3, ReadOnlyState);
    user.ClickArrow(1, 3);
    EXPECT_THAT(user.OpenChoices(), IsEmpty());
}

TEST(CGridCtrlInput, ClickCellOpensNothingItself)
{
    GridUser user;
    user.DoubleClick(1, 4);
    user.Type(u"x"_s);
    EXPECT_EQ(user.Line(), nullptr);
    EXPECT_EQ(user.Grid().GetItemText(1, 4), u"r1c4"_s);
}

TEST(CGridCtrlInput, KeyboardClicksAClickCell)
{
    GridUser user;
    user.Grid().SetFocusCell(3, 4);
    user.Press(Qt::Key_F2);
    user.Press(Qt::Key_Space);
    const auto told = user.Told(NM_CLICK);
    ASSERT_THAT(told, SizeIs(2));
    EXPECT_EQ(told[1].row, 3);
    EXPECT_EQ(told[1].column, 4);
}

TEST(CGridCtrlInput, ForbiddenCharactersAreDroppedAsTheyAreTyped)
{
    GridUser user;
    user.Click(1, 2);
    user.Press(Qt::Key_F2);
    user.Type(u"a\u0001b"_s + QChar(0xFFFE) + QChar(0xD800) + u"c"_s);
    ASSERT_NE(user.Line(), nullptr);
    EXPECT_EQ(user.Line()->text(), u"abc"_s);
}

TEST(CGridCtrlInput, ForbiddenCharactersAreDroppedFromWhatAnyOtherWayOfInputBrings)
{
    GridUser user;
    QAbstractItemModel* cells = user.Grid().model();
    EXPECT_TRUE(cells->setData(cells->index(0, 1), u"a\u0001b"_s, Qt::EditRole));
    EXPECT_EQ(user.Grid().GetItemText(1, 2), u"ab"_s);
}

TEST(CGridCtrlInput, ForbiddenCharactersAreDroppedFromATextPastedIntoAnEdit)
{
    GridUser user;
    test::SetClipboard(u"甲\u0002乙𠮷\u0007丙"_s);
    user.Click(1, 2);
    user.Press(Qt::Key_F2);
    user.Press(Qt::Key_V, Qt::ControlModifier);
    ASSERT_NE(user.Line(), nullptr);
    EXPECT_EQ(user.Line()->text(), u"甲乙𠮷丙"_s);
    EXPECT_EQ(user.Line()->cursorPosition(), 5);
}

TEST(CGridCtrlInput, ParentMayRebuildTheGridWhenACellIsClicked)
{
    GridUser user;
    QObject::connect(&user.Grid(), &CGridCtrl::Notify, &user.Window(),
                     [&](const GridNotification&) { user.Grid().DeleteNonFixedRows(); });
    user.ClickArrow(2, 3);
    EXPECT_EQ(user.Grid().GetRowCount(), 1);
    EXPECT_THAT(user.OpenChoices(), IsEmpty());
}

TEST(CGridCtrlInput, EnterInAGridDoesNotPressADefaultButton)
{
    QDialog dialog;
    QVBoxLayout layout(&dialog);
    CEnterGrid grid;
    QPushButton button;
    layout.addWidget(&grid);
    layout.addWidget(&button);
    button.setDefault(true);
    int pressed = 0;
    QObject::connect(&button, &QPushButton::clicked, &dialog, [&pressed] { ++pressed; });
    grid.SetAutoEnterNext(false);
    grid.SetRowCount(2);
    grid.SetColumnCount(2);
    dialog.show();
    grid.setFocus();
    grid.SetFocusCell(0, 0);
    QTest::keyClick(&grid, Qt::Key_Return);
    grid.edit(grid.currentIndex());
    QTest::keyClick(grid.findChild<QLineEdit*>(), Qt::Key_Return);
    GridUser::Settle();
    EXPECT_EQ(pressed, 0);
    EXPECT_TRUE(dialog.isVisible());
}

TEST(CGridCtrlInput, EnterMovesOnWhereThatIsSwitchedOn)
{
    CEnterGrid grid;
    grid.SetRowCount(2);
    grid.SetColumnCount(2);
    grid.show();
    grid.SetFocusCell(0, 0);
    QTest::keyClick(&grid, Qt::Key_Return);
    EXPECT_EQ(grid.GetFocusCell(), (GridCellId{0, 1}));
    QTest::keyClick(&grid, Qt::Key_Return);
    EXPECT_EQ(grid.GetFocusCell(), (GridCellId{1, 0}));
}

} // namespace
