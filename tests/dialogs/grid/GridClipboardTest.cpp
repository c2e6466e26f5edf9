#include "dialogs/grid/GridUser.h"

#include "dialogs/grid/GridText.h"

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using test::Clipboard;
using test::GridUser;
using test::SetClipboard;

namespace {

TEST(GridText, QuotesCellsWithTabsLineEndsAndQuotes)
{
    EXPECT_EQ(grid::ToTabbedText({{u"a\tb"_s, u"c\nd"_s}, {u"e\"f"_s, u"g"_s}}),
              u"\"a\tb\"\t\"c\nd\"\n\"e\"\"f\"\tg"_s);
}

TEST(GridText, ReadsBackWhatItWrote)
{
    const CArray<CStringArray> rows{{u"a\tb"_s, CString(), u"\"\""_s}, {u"\r\n"_s, u"\""_s, u"中"_s}};
    EXPECT_EQ(grid::FromTabbedText(grid::ToTabbedText(rows)), rows);
}

TEST(GridText, ReadsAnyLineEndAndNoRowBehindTheLast)
{
    const CArray<CStringArray> rows{{u"a"_s, u"b"_s}, {u"c"_s}};
    for (const CString& end : {u"\n"_s, u"\r\n"_s, u"\r"_s}) {
        EXPECT_EQ(grid::FromTabbedText(u"a\tb"_s + end + u"c"_s + end), rows);
    }
}

TEST(GridText, EmptyTextHasNoRowsAndAnEmptyLineIsARow)
{
    EXPECT_TRUE(grid::FromTabbedText(CString()).isEmpty());
    EXPECT_EQ(grid::FromTabbedText(u"\na"_s), (CArray<CStringArray>{{CString()}, {u"a"_s}}));
}

TEST(GridText, QuoteInsideACellStandsForItself)
{
    EXPECT_EQ(grid::FromTabbedText(u"5\" pipe\tx"_s), (CArray<CStringArray>{{u"5\" pipe"_s, u"x"_s}}));
}

TEST(GridText, UnclosedQuoteTakesTheRest)
{
    EXPECT_EQ(grid::FromTabbedText(u"\"a\tb"_s), (CArray<CStringArray>{{u"a\tb"_s}}));
}

TEST(GridText, ForbiddenCharactersAreThoseThatNoFileHolds)
{
    const CString kept = u"a\t\n\r中𠮷"_s;
    EXPECT_EQ(grid::WithoutForbidden(kept), kept);
    EXPECT_EQ(grid::WithoutForbidden(u"a\u0000b\u001Fc"_s), u"abc"_s);
    const CString broken = CString(QChar(0xDC00)) + u"x"_s + QChar(0xD83D) + QChar(0xFFFF) + QChar(0xFFFE);
    EXPECT_EQ(grid::WithoutForbidden(broken), u"x"_s);
}

TEST(GridClipboard, CopiesTheSelectedRangeAsTabbedText)
{
    GridUser user;
    user.Drag({2, 1}, {3, 2});
    user.Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(Clipboard(), u"r2c1\tr2c2\nr3c1\tr3c2"_s);
}

TEST(GridClipboard, CopyLeavesCellsOutsideTheSelectionEmpty)
{
    GridUser user;
    user.Click(1, 1);
    user.Click(2, 2, Qt::ControlModifier);
    user.Grid().OnEditCopy();
    EXPECT_EQ(Clipboard(), u"r1c1\t\n\tr2c2"_s);
}

TEST(GridClipboard, CopyWithoutSelectionLeavesTheClipboard)
{
    GridUser user;
    SetClipboard(u"before"_s);
    user.Grid().OnEditCopy();
    EXPECT_EQ(Clipboard(), u"before"_s);
}

TEST(GridClipboard, CutEmptiesWhatCanBeChanged)
{
    GridUser user;
    user.Grid().SetItemState(1, 1, ReadOnlyState);
    user.Grid().SetSelectedRange(1, 1, 1, 5);
    user.Press(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(Clipboard(), u"r1c1\tr1c2\tr1c3\tr1c4\tr1c5"_s);
    EXPECT_EQ(user.Grid().GetItemText(1, 1), u"r1c1"_s);
    EXPECT_EQ(user.Grid().GetItemText(1, 2), CString());
    EXPECT_EQ(user.Grid().GetItemText(1, 4), CString());
    // Yes or no: there is no third.
    EXPECT_EQ(user.Grid().GetItemText(1, 5), u"r1c5"_s);
}

TEST(GridClipboard, CutAndPasteTellTheParentNothing)
{
    GridUser user;
    user.Click(1, 2);
    const std::size_t told = user.Told().size();
    SetClipboard(u"a\tb"_s);
    user.Grid().OnEditPaste();
    user.Grid().OnEditCut();
    EXPECT_EQ(user.Grid().GetItemText(1, 2), CString());
    EXPECT_EQ(user.Grid().GetItemText(1, 3), u"b"_s);
    EXPECT_EQ(user.Told().size(), told);
}

TEST(GridClipboard, CutOfTheHeaderChangesNothing)
{
    GridUser user;
    user.Grid().SetSelectedRange(0, 1, 0, 5);
    user.Grid().OnEditCut();
    EXPECT_EQ(user.Grid().GetItemText(0, 3), u"单位"_s);
}

TEST(GridClipboard, PastesFromTheTopLeftOfTheSelection)
{
    GridUser user;
    SetClipboard(u"a\tb\r\nc\td\r\n"_s);
    user.Drag({3, 3}, {2, 2});
    user.Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(user.Grid().GetItemText(2, 2), u"a"_s);
    EXPECT_EQ(user.Grid().GetItemText(2, 3), u"b"_s);
    EXPECT_EQ(user.Grid().GetItemText(3, 2), u"c"_s);
    EXPECT_EQ(user.Grid().GetItemText(3, 3), u"d"_s);
    EXPECT_EQ(user.Grid().GetItemText(4, 2), u"r4c2"_s);
}

TEST(GridClipboard, PasteWithoutSelectionBeginsAtTheFocusCell)
{
    GridUser user;
    SetClipboard(u"a"_s);
    user.Grid().SetFocusCell(4, 2);
    user.Grid().OnEditPaste();
    EXPECT_EQ(user.Grid().GetItemText(4, 2), u"a"_s);
}

TEST(GridClipboard, PasteSkipsReadOnlyCells)
{
    GridUser user;
    user.Grid().SetItemState(1, 1, ReadOnlyState);
    SetClipboard(u"a\tb"_s);
    user.Click(1, 1);
    user.Grid().OnEditPaste();
    EXPECT_EQ(user.Grid().GetItemText(1, 1), u"r1c1"_s);
    EXPECT_EQ(user.Grid().GetItemText(1, 2), u"b"_s);
}

TEST(GridClipboard, PasteBiggerThanTheGridIsClipped)
{
    GridUser user(0, 2);
    SetClipboard(u"a\tb\tc\nd\te\tf"_s);
    user.Click(2, 4);
    user.Grid().OnEditPaste();
    EXPECT_EQ(user.Grid().GetItemText(2, 4), u"a"_s);
    EXPECT_EQ(user.Grid().GetRowCount(), 3);
    EXPECT_EQ(user.Grid().GetColumnCount(), 5);
}

TEST(GridClipboard, PasteSkipsFixedCells)
{
    GridUser user;
    SetClipboard(u"a\nb"_s);
    user.Grid().SetSelectedRange(0, 1, 0, 5);
    user.Grid().OnEditPaste();
    EXPECT_EQ(user.Grid().GetItemText(0, 1), u"清单/定额编号"_s);
    EXPECT_EQ(user.Grid().GetItemText(1, 1), u"b"_s);
}

TEST(GridClipboard, PasteDropsForbiddenCharacters)
{
    GridUser user;
    SetClipboard(u"甲\u0001\u000B乙"_s);
    user.Click(1, 2);
    user.Grid().OnEditPaste();
    EXPECT_EQ(user.Grid().GetItemText(1, 2), u"甲乙"_s);
}

TEST(GridClipboard, PasteTakesAnyUnitButOnlyYesOrNo)
{
    GridUser user;
    SetClipboard(u"10m\tCD\tmaybe"_s);
    user.Click(1, 3);
    user.Grid().OnEditPaste();
    EXPECT_EQ(user.Grid().GetItemText(1, 3), u"10m"_s);
    EXPECT_EQ(user.Grid().GetItemText(1, 4), u"CD"_s);
    EXPECT_EQ(user.Grid().GetItemText(1, 5), u"r1c5"_s);
    SetClipboard(u"否"_s);
    user.Click(1, 5);
    user.Grid().OnEditPaste();
    EXPECT_EQ(user.Grid().GetItemText(1, 5), u"否"_s);
}

TEST(GridClipboard, CellWithTabAndLineEndComesBackAsOneCell)
{
    GridUser user;
    user.Grid().SetItemText(1, 2, u"a\tb\nc\"d"_s);
    user.Click(1, 2);
    user.Grid().OnEditCopy();
    user.Click(2, 2);
    user.Grid().OnEditPaste();
    EXPECT_EQ(user.Grid().GetItemText(2, 2), u"a\tb\nc\"d"_s);
    EXPECT_EQ(user.Grid().GetItemText(2, 3), u"r2c3"_s);
}

} // namespace
