#include "embedded/windows/WindowPlacement.h"

#include <gtest/gtest.h>

using embedded::PlaceBeside;

namespace {

constexpr QRect Screen{0, 0, 1000, 800};

TEST(WindowPlacement, StandsAtTheRightWithUpperEdgesInLine)
{
    EXPECT_EQ(PlaceBeside({100, 50, 300, 400}, {200, 500}, Screen), QRect(400, 50, 200, 500));
}

TEST(WindowPlacement, StandsAtTheRightWhenItJustFits)
{
    EXPECT_EQ(PlaceBeside({100, 0, 700, 400}, {200, 500}, Screen), QRect(800, 0, 200, 500));
}

TEST(WindowPlacement, StandsAtTheLeftWhenThereIsNoRoomAtTheRight)
{
    EXPECT_EQ(PlaceBeside({300, 50, 600, 400}, {200, 500}, Screen), QRect(100, 50, 200, 500));
}

TEST(WindowPlacement, StandsAgainstTheRightEdgeWhenThereIsNoRoomOnEitherSide)
{
    EXPECT_EQ(PlaceBeside({100, 50, 800, 400}, {200, 500}, Screen), QRect(800, 50, 200, 500));
}

TEST(WindowPlacement, IsKeptOnTheScreenFromTopToBottom)
{
    EXPECT_EQ(PlaceBeside({100, 600, 300, 400}, {200, 500}, Screen), QRect(400, 300, 200, 500));
    EXPECT_EQ(PlaceBeside({100, -90, 300, 400}, {200, 500}, Screen), QRect(400, 0, 200, 500));
}

TEST(WindowPlacement, IsNeverLargerThanTheScreen)
{
    EXPECT_EQ(PlaceBeside({0, 0, 300, 400}, {2000, 900}, Screen), Screen);
}

TEST(WindowPlacement, CountsFromTheCornerOfASecondScreen)
{
    const QRect second(1000, -200, 600, 600);
    EXPECT_EQ(PlaceBeside({1000, -300, 300, 400}, {200, 500}, second), QRect(1300, -200, 200, 500));
    EXPECT_EQ(PlaceBeside({1350, 0, 250, 300}, {300, 300}, second), QRect(1050, 0, 300, 300));
}

} // namespace
