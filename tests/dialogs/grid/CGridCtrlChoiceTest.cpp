#include "dialogs/grid/GridUser.h"

#include "dialogs/grid/GridDelegate.h"
#include "dialogs/grid/GridEditors.h"
#include "support/Pixels.h"

#include <QtGui/QImage>
#include <QtWidgets/QApplication>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using test::GridUser;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

TEST(CGridCtrlChoice, ArrowOpensTheChoicesOfAUnitCell)
{
    GridUser user;
    user.ClickArrow(2, 3);
    CStringArray units;
    user.Grid().GetUnitOptions(3, units);
    EXPECT_EQ(user.OpenChoices(), units);
}

// The rows are pale yellow whatever the palette, but for the selected ones.
TEST(CGridCtrlChoice, ArrowIsMadeOutOnItsRowInLightAndDarkPalettes)
{
    for (const QPalette& palette : {QApplication::palette(), test::DarkPalette()}) {
        const test::ScopedPalette colours(palette);
        for (const bool hasFocus : {false, true}) {
            GridUser user(1, 2);
            user.Grid().SetSelectedRange(1, 1, 1, user.Grid().GetColumnCount() - 1);
            if (!hasFocus) user.Grid().clearFocus();
            const QImage image = user.Grid().viewport()->grab().toImage();
            for (const int row : {1, 2}) {
                const QRect place = GridDelegate::ArrowRect(user.RectOf(row, 3)).adjusted(2, 2, -3, -3);
                const QColor paper = image.pixelColor(place.topLeft());
                EXPECT_GE(test::MostContrast(image, place, paper), 3.0)
                    << paper.name().toStdString() << ' ' << row << hasFocus;
            }
        }
    }
}

TEST(CGridCtrlChoice, ClickBesideTheArrowOnlySelects)
{
    GridUser user;
    user.Click(2, 3);
    GridUser::Settle();
    EXPECT_THAT(user.OpenChoices(), IsEmpty());
    EXPECT_EQ(user.Grid().GetSelectedRow(), 2);
}

TEST(CGridCtrlChoice, KeysOpenTheChoicesOfACell)
{
    GridUser user;
    for (const auto& [key, modifiers] :
         {std::pair(Qt::Key_F2, Qt::NoModifier), std::pair(Qt::Key_Down, Qt::AltModifier),
          std::pair(Qt::Key_Space, Qt::NoModifier)}) {
        user.Grid().SetFocusCell(2, 5);
        user.Press(key, modifiers);
        EXPECT_EQ(user.OpenChoices(), (CStringArray{u"是"_s, u"否"_s})) << key;
        user.Press(Qt::Key_Escape);
        EXPECT_THAT(user.OpenChoices(), IsEmpty()) << key;
    }
    EXPECT_THAT(user.Told(), IsEmpty());
}

TEST(CGridCtrlChoice, TextOutsideTheListIsShownInTheOpenCell)
{
    GridUser user;
    user.Grid().SetItemText(2, 3, u"10m"_s);
    user.ClickArrow(2, 3);
    const auto* editor = user.Grid().findChild<GridChoiceEditor*>();
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->currentIndex(), -1);
    EXPECT_EQ(editor->placeholderText(), u"10m"_s);
}

TEST(CGridCtrlChoice, DownKeyComesFromATextOutsideTheListToItsFirstEntries)
{
    for (const auto& [presses, unit] : {std::pair(1, u"m"_s), std::pair(2, u"m2"_s)}) {
        GridUser user;
        user.Grid().SetItemText(2, 3, u"10m"_s);
        user.Grid().SetFocusCell(2, 3);
        user.Press(Qt::Key_F2);
        for (int press = 0; press < presses; ++press)
            user.Press(Qt::Key_Down);
        user.Press(Qt::Key_Return);
        const auto told = user.Told(1);
        ASSERT_THAT(told, SizeIs(1));
        EXPECT_EQ(told[0].text, unit);
    }
}

TEST(CGridCtrlChoice, TextInTheListIsPreselected)
{
    GridUser user;
    user.Grid().SetItemText(2, 5, u"否"_s);
    user.ClickArrow(2, 5);
    const auto* editor = user.Grid().findChild<GridChoiceEditor*>();
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->currentText(), u"否"_s);
}

TEST(CGridCtrlChoice, ChoiceIsToldAndTheCellLeftToTheParent)
{
    GridUser user;
    user.ClickArrow(2, 3);
    user.Choose(4);
    const auto told = user.Told(1);
    ASSERT_THAT(told, SizeIs(1));
    EXPECT_EQ(told[0].row, 2);
    EXPECT_EQ(told[0].column, 3);
    EXPECT_EQ(told[0].text, u"千克"_s);
    EXPECT_EQ(user.Grid().GetItemText(2, 3), u"r2c3"_s);
    EXPECT_EQ(user.Grid().findChild<GridChoiceEditor*>(), nullptr);
    EXPECT_THAT(user.Told(LVN_ENDLABELEDIT), IsEmpty());
}

TEST(CGridCtrlChoice, ChoiceByKeyboardIsTold)
{
    GridUser user;
    user.Grid().SetItemText(2, 5, u"是"_s);
    user.Grid().SetFocusCell(2, 5);
    user.Press(Qt::Key_F2);
    user.Press(Qt::Key_Down);
    user.Press(Qt::Key_Return);
    ASSERT_THAT(user.Told(CellChoiceMade), SizeIs(1));
    EXPECT_EQ(user.Told(CellChoiceMade)[0].text, u"否"_s);
    EXPECT_EQ(QApplication::focusWidget(), &user.Grid());
}

TEST(CGridCtrlChoice, ChoiceOfTheSameTextIsToldToo)
{
    GridUser user;
    user.Grid().SetItemText(2, 5, u"是"_s);
    user.ClickArrow(2, 5);
    user.Choose(0);
    EXPECT_THAT(user.Told(CellChoiceMade), SizeIs(1));
}

TEST(CGridCtrlChoice, EscapeMakesNoChoice)
{
    GridUser user;
    user.ClickArrow(2, 3);
    user.Press(Qt::Key_Escape);
    EXPECT_THAT(user.Told(CellChoiceMade), IsEmpty());
    EXPECT_EQ(user.Grid().findChild<GridChoiceEditor*>(), nullptr);
}

TEST(CGridCtrlChoice, ParentMayRebuildTheGridWhenAChoiceIsMade)
{
    GridUser user;
    QObject::connect(&user.Grid(), &CGridCtrl::Notify, &user.Window(), [&](const GridNotification& told) {
        if (told.code == CellChoiceMade) user.Grid().DeleteAllItems();
    });
    user.ClickArrow(2, 3);
    user.Choose(0);
    EXPECT_EQ(user.Grid().GetRowCount(), 0);
    EXPECT_EQ(user.Grid().findChild<GridChoiceEditor*>(), nullptr);
}

} // namespace
