#include "widgets/ReadableColour.h"

#include <gtest/gtest.h>

using widgets::Contrast;
using widgets::ReadableOn;

namespace {

constexpr QColor Black(0, 0, 0);
constexpr QColor White(255, 255, 255);
constexpr QColor Blue(0, 0, 255);
constexpr QColor Yellow(255, 255, 0);

} // namespace

TEST(ReadableColour, ContrastGoesFromOneToTwentyOne)
{
    EXPECT_DOUBLE_EQ(Contrast(Blue, Blue), 1);
    EXPECT_NEAR(Contrast(White, Black), 21, 1e-6);
    EXPECT_DOUBLE_EQ(Contrast(White, Blue), Contrast(Blue, White));
}

TEST(ReadableColour, ContrastIsThatOfTheAccessibilityGuidelines)
{
    EXPECT_NEAR(Contrast(Blue, White), 8.59, 0.005);
    EXPECT_NEAR(Contrast(QColor(255, 0, 0), White), 4.00, 0.005);
    EXPECT_NEAR(Contrast(QColor(119, 119, 119), White), 4.48, 0.005);
}

TEST(ReadableColour, LightBackgroundLeavesEveryColour)
{
    EXPECT_EQ(ReadableOn(White, Blue), Blue);
    EXPECT_EQ(ReadableOn(White, Yellow), Yellow);
}

TEST(ReadableColour, DarkBackgroundLeavesAColourThatCanBeMadeOut)
{
    EXPECT_EQ(ReadableOn(Black, Yellow), Yellow);
    EXPECT_EQ(ReadableOn(QColor(53, 53, 53), QColor(255, 0, 0)), QColor(255, 0, 0));
}

TEST(ReadableColour, DarkBackgroundLightensAColourThatWouldBeLostAndKeepsItsHue)
{
    for (const int grey : {0, 30, 53, 80}) {
        const QColor background(grey, grey, grey);
        const QColor readable = ReadableOn(background, Blue);
        EXPECT_GE(Contrast(readable, background), 4.5) << grey;
        EXPECT_EQ(readable.hslHue(), Blue.hslHue()) << grey;
    }
}

TEST(ReadableColour, DarkColourWithoutHueBecomesGrey)
{
    const QColor readable = ReadableOn(Black, QColor(20, 20, 20));
    EXPECT_GE(Contrast(readable, Black), 4.5);
    EXPECT_EQ(readable.hslSaturation(), 0);
}
