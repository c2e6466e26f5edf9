#include "embedded/windows/WindowPlacement.h"

#include <gtest/gtest.h>

using embedded::PlaceBeside;
using embedded::WindowPlaces;

namespace {

constexpr QRect Screen{0, 0, 1000, 800};
constexpr int Narrowest = 150;

/// The place of a window beside a neighbour that is not looked at.
QRect Place(const QRect& neighbour, const QSize& size, const QRect& screen = Screen)
{
    return PlaceBeside(neighbour, size, Narrowest, screen).window;
}

TEST(WindowPlacement, StandsAtTheRightWithUpperEdgesInLine)
{
    EXPECT_EQ(Place({100, 50, 300, 400}, {200, 500}), QRect(400, 50, 200, 500));
}

TEST(WindowPlacement, StandsAtTheRightWhenItJustFits)
{
    EXPECT_EQ(Place({100, 0, 700, 400}, {200, 500}), QRect(800, 0, 200, 500));
    EXPECT_EQ(Place({300, 0, 500, 400}, {200, 500}), QRect(800, 0, 200, 500));
}

TEST(WindowPlacement, StandsAtTheLeftWhenThereIsNoRoomAtTheRight)
{
    EXPECT_EQ(Place({300, 50, 600, 400}, {200, 500}), QRect(100, 50, 200, 500));
    EXPECT_EQ(Place({200, 50, 700, 400}, {200, 500}), QRect(0, 50, 200, 500));
}

TEST(WindowPlacement, NeighbourMakesWayAsFarAsNeededWhenItFitsOnNeitherSide)
{
    const WindowPlaces places = PlaceBeside({120, 50, 700, 400}, {200, 500}, Narrowest, Screen);
    EXPECT_EQ(places.neighbour, QRect(100, 50, 700, 400));
    EXPECT_EQ(places.window, QRect(800, 50, 200, 500));
}

TEST(WindowPlacement, BecomesNarrowerWhenTheNeighbourCannotMakeWayFarEnough)
{
    const WindowPlaces places = PlaceBeside({80, 50, 820, 400}, {200, 500}, Narrowest, Screen);
    EXPECT_EQ(places.neighbour, QRect(0, 50, 820, 400));
    EXPECT_EQ(places.window, QRect(820, 50, 180, 500));
}

TEST(WindowPlacement, CoversAsLittleAsItCanWhenEvenTheNarrowestDoesNotFit)
{
    const WindowPlaces places = PlaceBeside({50, 50, 900, 400}, {200, 500}, Narrowest, Screen);
    EXPECT_EQ(places.neighbour, QRect(0, 50, 900, 400));
    EXPECT_EQ(places.window, QRect(850, 50, 150, 500));
    EXPECT_EQ(Place({50, 50, 900, 400}, {120, 500}), QRect(880, 50, 120, 500));
}

TEST(WindowPlacement, NeighbourThatStandsBeyondTheEdgeIsLeftThere)
{
    const WindowPlaces places = PlaceBeside({-30, 50, 900, 400}, {200, 500}, Narrowest, Screen);
    EXPECT_EQ(places.neighbour, QRect(-30, 50, 900, 400));
    EXPECT_EQ(places.window, QRect(850, 50, 150, 500));
}

TEST(WindowPlacement, IsKeptOnTheScreenFromTopToBottom)
{
    EXPECT_EQ(Place({100, 600, 300, 400}, {200, 500}), QRect(400, 300, 200, 500));
    EXPECT_EQ(Place({100, -90, 300, 400}, {200, 500}), QRect(400, 0, 200, 500));
}

TEST(WindowPlacement, IsNeverLargerThanTheScreen)
{
    EXPECT_EQ(Place({-5000, 0, 300, 400}, {2000, 900}), Screen);
    EXPECT_EQ(PlaceBeside({0, 0, 1000, 800}, {2000, 900}, 3000, Screen).window, Screen);
}

TEST(WindowPlacement, CountsFromTheCornerOfASecondScreen)
{
    const QRect second(1000, -200, 600, 600);
    EXPECT_EQ(Place({1000, -300, 300, 400}, {200, 500}, second), QRect(1300, -200, 200, 500));
    EXPECT_EQ(Place({1350, 0, 250, 300}, {300, 300}, second), QRect(1050, 0, 300, 300));
}

// The main dialog in the middle of usual screens, and its picker, at a font of 9 points.

constexpr QSize DialogSize(980, 700);
constexpr QSize PickerSize(564, 620);
constexpr int NarrowestPicker = 314;

WindowPlaces PickerBesideDialogOn(const QSize& screen)
{
    const QRect dialog((screen.width() - DialogSize.width()) / 2, (screen.height() - DialogSize.height()) / 2,
                       DialogSize.width(), DialogSize.height());
    return PlaceBeside(dialog, PickerSize, NarrowestPicker, QRect({0, 0}, screen));
}

TEST(WindowPlacement, LargeScreenShowsThePickerAsWideAsItIs)
{
    const WindowPlaces places = PickerBesideDialogOn({2560, 1440});
    EXPECT_EQ(places.window, QRect(1770, 370, 564, 620));
    EXPECT_EQ(places.neighbour, QRect(790, 370, 980, 700));
}

TEST(WindowPlacement, UsualScreensShowThePickerAsWideAsItIsToo)
{
    EXPECT_EQ(PickerBesideDialogOn({1920, 1080}).window, QRect(1356, 190, 564, 620));
    EXPECT_EQ(PickerBesideDialogOn({1920, 1080}).neighbour, QRect(376, 190, 980, 700));
    EXPECT_EQ(PickerBesideDialogOn({1600, 900}).window, QRect(1036, 100, 564, 620));
}

TEST(WindowPlacement, SmallScreenShowsANarrowPickerThatLeavesTheDialogInSight)
{
    const WindowPlaces places = PickerBesideDialogOn({1366, 768});
    EXPECT_EQ(places.neighbour, QRect(0, 34, 980, 700));
    EXPECT_EQ(places.window, QRect(980, 34, 386, 620));
}

// 1920 by 1080 at 150 %. The dialog's rightmost buttons, which open the pickers, end 40 pixels before its
// edge.
TEST(WindowPlacement, ScreenAtOneAndAHalfTheSizeLeavesTheDialogsButtonsInSight)
{
    const WindowPlaces places = PickerBesideDialogOn({1280, 720});
    EXPECT_EQ(places.neighbour, QRect(0, 10, 980, 700));
    EXPECT_EQ(places.window, QRect(966, 10, 314, 620));
    EXPECT_GE(places.window.left(), DialogSize.width() - 40);
}

/// The place beside a part of a window that fills the screen.
WindowPlaces PlaceInFullScreen(const QRect& part, const QSize& size)
{
    return embedded::PlaceBesidePart(part, Screen, size, Narrowest, Screen);
}

TEST(WindowPlacement, StandsBesideTheWindowOfAPartWhereThereIsRoom)
{
    const WindowPlaces places =
        embedded::PlaceBesidePart({250, 100, 50, 50}, {120, 50, 700, 400}, {200, 500}, Narrowest, Screen);
    EXPECT_EQ(places.neighbour, QRect(100, 50, 700, 400));
    EXPECT_EQ(places.window, QRect(800, 50, 200, 500));
}

TEST(WindowPlacement, StandsBesideThePartAndNotOverItWhereThereIsNoRoomBesideItsWindow)
{
    EXPECT_EQ(PlaceInFullScreen({700, 300, 290, 400}, {200, 500}).window, QRect(500, 0, 200, 500));
    // A part at the left is not covered by what stands at the right edge anyway.
    EXPECT_EQ(PlaceInFullScreen({10, 300, 290, 400}, {200, 500}).window, QRect(850, 0, 150, 500));
    EXPECT_EQ(PlaceInFullScreen({300, 300, 600, 400}, {200, 500}).window, QRect(100, 0, 200, 500));
}

TEST(WindowPlacement, BecomesNarrowerRatherThanCoverThePart)
{
    EXPECT_EQ(PlaceInFullScreen({180, 300, 800, 400}, {200, 500}).window, QRect(0, 0, 180, 500));
    EXPECT_EQ(PlaceInFullScreen({0, 300, 900, 400}, {200, 500}).window, QRect(850, 0, 150, 500))
        << "no side has room";
}

TEST(WindowPlacement, WindowOfThePartStaysWhereItIsWhenItIsCovered)
{
    const QRect window(50, 50, 900, 400);
    EXPECT_EQ(
        embedded::PlaceBesidePart({700, 100, 240, 300}, window, {200, 500}, Narrowest, Screen).neighbour,
        window);
}

} // namespace
