#include "embedded/windows/WindowPlacement.h"

#include <gtest/gtest.h>

using embedded::PlaceBeside;

namespace {

constexpr QRect Screen{0, 0, 1000, 800};
constexpr int Narrowest = 150;

TEST(WindowPlacement, StandsAtTheRightWithUpperEdgesInLine)
{
    EXPECT_EQ(PlaceBeside({100, 50, 300, 400}, {200, 500}, Narrowest, Screen), QRect(400, 50, 200, 500));
}

TEST(WindowPlacement, StandsAtTheRightWhenItJustFits)
{
    EXPECT_EQ(PlaceBeside({100, 0, 700, 400}, {200, 500}, Narrowest, Screen), QRect(800, 0, 200, 500));
    EXPECT_EQ(PlaceBeside({300, 0, 500, 400}, {200, 500}, Narrowest, Screen), QRect(800, 0, 200, 500));
}

TEST(WindowPlacement, StandsAtTheLeftWhenThereIsNoRoomAtTheRight)
{
    EXPECT_EQ(PlaceBeside({300, 50, 600, 400}, {200, 500}, Narrowest, Screen), QRect(100, 50, 200, 500));
    EXPECT_EQ(PlaceBeside({200, 50, 700, 400}, {200, 500}, Narrowest, Screen), QRect(0, 50, 200, 500));
}

TEST(WindowPlacement, BecomesNarrowerForTheLargerSideWhenItFitsOnNeither)
{
    EXPECT_EQ(PlaceBeside({120, 50, 700, 400}, {200, 500}, Narrowest, Screen), QRect(820, 50, 180, 500));
    EXPECT_EQ(PlaceBeside({190, 50, 700, 400}, {200, 500}, Narrowest, Screen), QRect(0, 50, 190, 500));
    EXPECT_EQ(PlaceBeside({160, 50, 680, 400}, {200, 500}, Narrowest, Screen), QRect(840, 50, 160, 500));
}

TEST(WindowPlacement, CoversAsLittleAsItCanWhenEvenTheNarrowestDoesNotFit)
{
    EXPECT_EQ(PlaceBeside({100, 50, 800, 400}, {200, 500}, Narrowest, Screen), QRect(850, 50, 150, 500));
    EXPECT_EQ(PlaceBeside({140, 50, 800, 400}, {200, 500}, Narrowest, Screen), QRect(0, 50, 150, 500));
    EXPECT_EQ(PlaceBeside({100, 50, 800, 400}, {120, 500}, Narrowest, Screen), QRect(880, 50, 120, 500));
}

TEST(WindowPlacement, IsKeptOnTheScreenFromTopToBottom)
{
    EXPECT_EQ(PlaceBeside({100, 600, 300, 400}, {200, 500}, Narrowest, Screen), QRect(400, 300, 200, 500));
    EXPECT_EQ(PlaceBeside({100, -90, 300, 400}, {200, 500}, Narrowest, Screen), QRect(400, 0, 200, 500));
}

TEST(WindowPlacement, IsNeverLargerThanTheScreen)
{
    EXPECT_EQ(PlaceBeside({-5000, 0, 300, 400}, {2000, 900}, Narrowest, Screen), Screen);
    EXPECT_EQ(PlaceBeside({0, 0, 1000, 800}, {2000, 900}, 3000, Screen), Screen);
}

TEST(WindowPlacement, CountsFromTheCornerOfASecondScreen)
{
    const QRect second(1000, -200, 600, 600);
    EXPECT_EQ(PlaceBeside({1000, -300, 300, 400}, {200, 500}, Narrowest, second),
              QRect(1300, -200, 200, 500));
    EXPECT_EQ(PlaceBeside({1350, 0, 250, 300}, {300, 300}, Narrowest, second), QRect(1050, 0, 300, 300));
}

// The main dialog in the middle of usual screens, and its picker, at a font of 9 points.

constexpr QSize DialogSize(980, 700);
constexpr QSize PickerSize(564, 620);
constexpr int NarrowestPicker = 368;

QRect PickerBesideDialogOn(const QSize& screen)
{
    const QRect dialog((screen.width() - DialogSize.width()) / 2, (screen.height() - DialogSize.height()) / 2,
                       DialogSize.width(), DialogSize.height());
    return PlaceBeside(dialog, PickerSize, NarrowestPicker, QRect({0, 0}, screen));
}

TEST(WindowPlacement, LargeScreenShowsThePickerAsWideAsItIs)
{
    EXPECT_EQ(PickerBesideDialogOn({2560, 1440}), QRect(1770, 370, 564, 620));
}

TEST(WindowPlacement, UsualScreenShowsANarrowerPickerBesideTheDialog)
{
    EXPECT_EQ(PickerBesideDialogOn({1920, 1080}), QRect(1450, 190, 470, 620));
}

TEST(WindowPlacement, SmallScreenShowsTheNarrowestPickerAtItsEdge)
{
    EXPECT_EQ(PickerBesideDialogOn({1366, 768}), QRect(998, 34, 368, 620));
}

} // namespace
