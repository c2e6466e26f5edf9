#include "dialogs/grid/GridUser.h"

#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHeaderView>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using test::GridUser;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

CStringArray HeaderOf(const MyGridCtrl& grid)
{
    CStringArray captions;
    for (int col = 0; col < grid.GetColumnCount(); ++col)
        captions += grid.GetItemText(0, col);
    return captions;
}

std::vector<int> RowsOf(MyGridCtrl& grid)
{
    std::vector<int> rows{99};
    grid.GetSelectedRows(rows);
    return rows;
}

TEST(MyGridCtrl, PlanForAttTypeZeroHasFiveColumnsInBillMode)
{
    GridUser user(0, 0);
    EXPECT_EQ(HeaderOf(user.Grid()), (CStringArray{CString(), u"清单/定额编号"_s, u"清单/定额名称"_s,
                                                   u"单位"_s, u"计算结果编辑"_s}));
    EXPECT_EQ(user.Grid().GetRowCount(), 1);
}

TEST(MyGridCtrl, PlanForOtherAttTypesHasSixColumns)
{
    for (const int attType : {1, 2, -1}) {
        GridUser user(attType, 0);
        EXPECT_EQ(user.Grid().GetColumnCount(), 6) << attType;
        EXPECT_EQ(user.Grid().GetItemText(0, 5), u"带管道配件"_s) << attType;
    }
}

TEST(MyGridCtrl, CaptionsInQuotaModeSpeakOfQuotasOnly)
{
    GridUser user(1, 0);
    user.Host().SetMode(SQdDeInfo::QuotaMode);
    EXPECT_TRUE(user.Grid().SetupColumns(1));
    EXPECT_EQ(HeaderOf(user.Grid()), (CStringArray{CString(), u"定额编号"_s, u"定额名称"_s, u"单位"_s,
                                                   u"计算结果编辑"_s, u"带管道配件"_s}));
}

TEST(MyGridCtrl, CaptionsInAnUnknownModeAreThoseOfBillMode)
{
    GridUser user(0, 0);
    user.Host().SetMode(static_cast<SQdDeInfo::EQdDeMode>(7));
    user.Grid().SetupColumns(0);
    EXPECT_EQ(user.Grid().GetItemText(0, 1), u"清单/定额编号"_s);
}

TEST(MyGridCtrl, ColumnsHaveTheirWidths)
{
    GridUser user(1, 0);
    EXPECT_EQ(user.Grid().verticalHeader()->width(), 20);
    const int widths[] = {100, 170, 50, 80};
    for (int col = 0; col < 4; ++col)
        EXPECT_EQ(user.Grid().columnWidth(col), widths[col]) << col;
}

TEST(MyGridCtrl, LastColumnIsAsWideAsItsCaptionNeeds)
{
    GridUser user(1, 0);
    EXPECT_GE(user.Grid().columnWidth(4), user.Grid().fontMetrics().horizontalAdvance(u"带管道配件"_s));
}

TEST(MyGridCtrl, HeaderRowIsTwoPixelsHigherThanItNeeds)
{
    GridUser user(1, 0);
    EXPECT_EQ(user.Grid().horizontalHeader()->height(), user.Grid().GetFixedRowHeight() + 2);
}

TEST(MyGridCtrl, HeaderIsCentredAndWrapped)
{
    GridUser user(1, 0);
    for (int section = 0; section < 5; ++section) {
        const int format =
            user.Grid().model()->headerData(section, Qt::Horizontal, Qt::TextAlignmentRole).toInt();
        EXPECT_TRUE(format & Qt::AlignHCenter) << section;
        EXPECT_TRUE(format & Qt::TextWordWrap) << section;
    }
}

TEST(MyGridCtrl, CaptionsAreNotCutOffAtAnyFontSize)
{
    GridUser user(1, 1);
    for (int points = 8; points <= 16; ++points) {
        QFont font = user.Window().font();
        font.setPointSize(points);
        user.Window().setFont(font);
        const QHeaderView* header = user.Grid().horizontalHeader();
        const int margin = 2 * header->style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, header);
        for (int col = 1; col < 6; ++col) {
            const QRect room(0, 0, header->sectionSize(col - 1) - margin, 1000);
            const QRect needed = header->fontMetrics().boundingRect(room, Qt::AlignHCenter | Qt::TextWordWrap,
                                                                    user.Grid().GetItemText(0, col));
            EXPECT_LE(needed.width(), room.width()) << points << " points, column " << col;
            EXPECT_LE(needed.height() + margin, header->height()) << points << " points, column " << col;
        }
        EXPECT_GE(user.Grid().rowHeight(0), user.Grid().fontMetrics().height()) << points << " points";
    }
}

TEST(MyGridCtrl, LongestUnitIsNotCutOffAtAnyFontSize)
{
    GridUser user(1, 1);
    for (int points = 8; points <= 16; ++points) {
        QFont font = user.Window().font();
        font.setPointSize(points);
        user.Window().setFont(font);
        const int room = user.Grid().columnWidth(2) - GridDelegate::ArrowRect(user.RectOf(1, 3)).width();
        EXPECT_LE(user.Grid().fontMetrics().horizontalAdvance(u"千克"_s), room) << points << " points";
    }
}

TEST(MyGridCtrl, UnitThatReachesToTheArrowIsNotCutOff)
{
    GridUser user(1, 1);
    MyGridCtrl& grid = user.Grid();
    grid.SetItemText(1, 3, u"10m2"_s);
    const int margin = grid.style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, &grid) + 1;
    const int arrow = GridDelegate::ArrowRect(user.RectOf(1, 3)).width();
    const int text = grid.fontMetrics().horizontalAdvance(u"10m2"_s);
    EXPECT_LE(grid.sizeHintForIndex(grid.model()->index(0, 2)).width(), margin + text + arrow + 1);
}

TEST(MyGridCtrl, TextBackgroundIsPaleYellow)
{
    GridUser user(1, 1);
    const QModelIndex cell = user.Grid().model()->index(0, 0);
    EXPECT_EQ(cell.data(Qt::BackgroundRole).value<QColor>(), QColor(0xFF, 0xFF, 0xE0));
}

TEST(MyGridCtrl, ChangeFromSixToFiveColumnsDropsTheSixth)
{
    GridUser user(1, 3);
    user.Grid().DeleteAllItems();
    EXPECT_EQ(user.Grid().GetColumnCount(), 0);
    user.Grid().SetupColumns(0);
    EXPECT_EQ(user.Grid().GetColumnCount(), 5);
    EXPECT_EQ(user.Grid().GetRowCount(), 1);
    EXPECT_EQ(user.Grid().GetItemText(0, 5), CString());
    EXPECT_FALSE(user.Grid().IsValid(0, 5));
}

TEST(MyGridCtrl, FiveStringsIntoFourDataColumnsDropTheFifth)
{
    GridUser user(0, 0);
    const int row = user.Grid().InsertOneprop(1, {u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"是"_s}, nullptr);
    EXPECT_EQ(row, 1);
    EXPECT_EQ(user.Grid().GetItemText(1, 4), u"d"_s);
    EXPECT_EQ(user.Grid().GetItemText(1, 5), CString());
    EXPECT_EQ(user.Grid().GetColumnCount(), 5);
}

TEST(MyGridCtrl, UnitOptionsOfTheUnitColumn)
{
    MyGridCtrl grid;
    CStringArray options{u"old"_s};
    EXPECT_TRUE(grid.GetUnitOptions(3, options));
    EXPECT_EQ(options, (CStringArray{u"m"_s, u"m2"_s, u"m3"_s, u"吨"_s, u"千克"_s, u"个"_s, u"根"_s, u"座"_s,
                                     u"榀"_s, u"块"_s, u"套"_s, u"只"_s, u"樘"_s, u"副"_s}));
}

TEST(MyGridCtrl, UnitOptionsOfTheAnnexColumn)
{
    MyGridCtrl grid;
    CStringArray options;
    EXPECT_TRUE(grid.GetUnitOptions(5, options));
    EXPECT_EQ(options, (CStringArray{u"是"_s, u"否"_s}));
}

TEST(MyGridCtrl, UnitOptionsOfOtherColumnsAreEmpty)
{
    MyGridCtrl grid;
    for (const int column : {-1, 0, 1, 2, 4, 6}) {
        CStringArray options{u"old"_s};
        EXPECT_TRUE(grid.GetUnitOptions(column, options)) << column;
        EXPECT_TRUE(options.isEmpty()) << column;
    }
}

TEST(MyGridCtrl, SelectedRowIsTheOneRow)
{
    GridUser user;
    user.Click(3, 2);
    EXPECT_EQ(user.Grid().GetSelectedRow(), 3);
}

TEST(MyGridCtrl, SelectedRowIsNoneForTwoRows)
{
    GridUser user;
    user.Drag({2, 1}, {3, 1});
    EXPECT_EQ(user.Grid().GetSelectedRow(), -1);
}

TEST(MyGridCtrl, SelectedRowIsNoneWithoutSelection)
{
    GridUser user;
    EXPECT_EQ(user.Grid().GetSelectedRow(), -1);
}

TEST(MyGridCtrl, SelectedRowIsNoneForTheHeader)
{
    GridUser user;
    user.Grid().SetSelectedRange(0, 1, 0, 5);
    EXPECT_EQ(user.Grid().GetSelectedCellRange(), (GridRange{0, 1, 0, 5}));
    EXPECT_EQ(user.Grid().GetSelectedRow(), -1);
}

TEST(MyGridCtrl, SelectedRowsCountFromTheBottom)
{
    GridUser user;
    user.Drag({3, 2}, {5, 2});
    EXPECT_THAT(RowsOf(user.Grid()), ElementsAre(5, 4, 3));
}

TEST(MyGridCtrl, SelectedRowsLeaveOutRowsWithoutASelectedCell)
{
    GridUser user;
    user.Click(2, 1);
    user.Click(4, 3, Qt::ControlModifier);
    EXPECT_EQ(user.Grid().GetSelectedCellRange(), (GridRange{2, 1, 4, 3}));
    EXPECT_THAT(RowsOf(user.Grid()), ElementsAre(4, 2));
}

TEST(MyGridCtrl, SelectedRowsAreEmptyWithoutSelection)
{
    GridUser user;
    EXPECT_THAT(RowsOf(user.Grid()), IsEmpty());
}

TEST(MyGridCtrl, ReleaseOfTheRightButtonIsNotReacted)
{
    GridUser user;
    user.Drag({2, 1}, {3, 2});
    QWidget* cells = user.Grid().viewport();
    QTest::mousePress(cells, Qt::RightButton, {}, user.RectOf(2, 1).center());
    // The base would drop the selection on a release where no cell is.
    QTest::mouseRelease(cells, Qt::RightButton, {}, QPoint(5, cells->height() - 3));
    EXPECT_EQ(user.Grid().GetSelectedCellRange(), (GridRange{2, 1, 3, 2}));
    EXPECT_THAT(user.Told(NM_CLICK), IsEmpty());
}

TEST(MyGridCtrl, EnterNeitherMovesOnNorLeavesTheGrid)
{
    GridUser user;
    user.Click(2, 2);
    user.Press(Qt::Key_Return);
    user.Press(Qt::Key_Enter);
    EXPECT_EQ(user.Grid().GetFocusCell(), (GridCellId{2, 2}));
    EXPECT_EQ(QApplication::focusWidget(), &user.Grid());
}

TEST(MyGridCtrl, DoesNotSupportTheCommandsOfAContainer)
{
    MyGridCtrl grid;
    CCtrlBase& control = grid;
    CStringArray fields{u"a"_s};
    EXPECT_EQ(control.New(&fields), 0);
    EXPECT_FALSE(control.Del(&fields) || control.Change(&fields) || control.SelChange(&fields) ||
                 control.Copy(&fields) || control.Move(&fields) || control.MoveUp(&fields) ||
                 control.MoveDown(&fields));
    EXPECT_EQ(fields, CStringArray{u"a"_s});
}

TEST(MyGridCtrl, SetupWithoutAHostRaises)
{
    MyGridCtrl grid;
    EXPECT_THROW(grid.SetupColumns(0), host::NoHostError);
}

} // namespace
