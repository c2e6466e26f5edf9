#include "platform/Numbers.h"

#include <QtCore/QLocale>

#include <gtest/gtest.h>

#include <limits>

namespace {

using platform::_wtof;
using platform::_wtoi;
using platform::_wtol;

constexpr int IntMax = std::numeric_limits<std::int32_t>::max();
constexpr int IntMin = std::numeric_limits<std::int32_t>::min();

TEST(WideTextToInt, ReadsLeadingDigits)
{
    EXPECT_EQ(_wtoi(u"0"), 0);
    EXPECT_EQ(_wtoi(u"42"), 42);
    EXPECT_EQ(_wtoi(u"007"), 7);
}

TEST(WideTextToInt, IgnoresWhatFollowsTheDigits)
{
    EXPECT_EQ(_wtoi(u"12abc"), 12);
    EXPECT_EQ(_wtoi(u"12 34"), 12);
    EXPECT_EQ(_wtoi(u"3.9"), 3);
    EXPECT_EQ(_wtoi(u"1e3"), 1);
    EXPECT_EQ(_wtoi(u"5-"), 5);
}

TEST(WideTextToInt, TextWithoutDigitsGivesZero)
{
    EXPECT_EQ(_wtoi(u""), 0);
    EXPECT_EQ(_wtoi(QStringView()), 0);
    EXPECT_EQ(_wtoi(u"abc"), 0);
    EXPECT_EQ(_wtoi(u"x1"), 0);
    EXPECT_EQ(_wtoi(u"-"), 0);
    EXPECT_EQ(_wtoi(u"   "), 0);
    EXPECT_EQ(_wtoi(u".5"), 0);
}

TEST(WideTextToInt, SkipsEveryAsciiBlank)
{
    EXPECT_EQ(_wtoi(u" \t\n\v\f\r8"), 8);
}

TEST(WideTextToInt, OtherBlanksDoNotCount)
{
    EXPECT_EQ(_wtoi(u"\u00A08"), 0);
    EXPECT_EQ(_wtoi(u"\u30008"), 0);
}

TEST(WideTextToInt, TakesOneSign)
{
    EXPECT_EQ(_wtoi(u"-5"), -5);
    EXPECT_EQ(_wtoi(u"+5"), 5);
    EXPECT_EQ(_wtoi(u" -5"), -5);
    EXPECT_EQ(_wtoi(u"+-1"), 0);
    EXPECT_EQ(_wtoi(u"--1"), 0);
    EXPECT_EQ(_wtoi(u"- 1"), 0);
}

TEST(WideTextToInt, OtherDigitsAndSignsDoNotCount)
{
    EXPECT_EQ(_wtoi(u"１２"), 0);
    EXPECT_EQ(_wtoi(u"٣"), 0);
    EXPECT_EQ(_wtoi(u"3４"), 3);
    EXPECT_EQ(_wtoi(u"－3"), 0);
}

TEST(WideTextToInt, ReadsBothLimits)
{
    EXPECT_EQ(_wtoi(u"2147483647"), IntMax);
    EXPECT_EQ(_wtoi(u"-2147483648"), IntMin);
    EXPECT_EQ(_wtoi(u"-2147483647"), IntMin + 1);
}

TEST(WideTextToInt, SaturatesAtBothLimits)
{
    EXPECT_EQ(_wtoi(u"2147483648"), IntMax);
    EXPECT_EQ(_wtoi(u"-2147483649"), IntMin);
    EXPECT_EQ(_wtoi(QString(4000, u'9')), IntMax);
    EXPECT_EQ(_wtoi(u'-' + QString(4000, u'9')), IntMin);
}

TEST(WideTextToLong, Has32BitsAsTheInteger)
{
    EXPECT_EQ(_wtol(u" -12x"), -12);
    EXPECT_EQ(_wtol(u"4294967296"), IntMax);
    EXPECT_EQ(_wtol(u"-4294967296"), IntMin);
}

TEST(WideTextToDouble, ReadsWholePartFractionAndExponent)
{
    EXPECT_EQ(_wtof(u"12"), 12.0);
    EXPECT_EQ(_wtof(u"12.5"), 12.5);
    EXPECT_EQ(_wtof(u" -0.25 m"), -0.25);
    EXPECT_EQ(_wtof(u"+1.5E+3"), 1500.0);
    EXPECT_EQ(_wtof(u"15e-1"), 1.5);
}

TEST(WideTextToDouble, EitherSideOfTheStopMayBeMissing)
{
    EXPECT_EQ(_wtof(u".5"), 0.5);
    EXPECT_EQ(_wtof(u"-.5"), -0.5);
    EXPECT_EQ(_wtof(u"5."), 5.0);
    EXPECT_EQ(_wtof(u"5.e1"), 50.0);
    EXPECT_EQ(_wtof(u"."), 0.0);
    EXPECT_EQ(_wtof(u".e5"), 0.0);
}

TEST(WideTextToDouble, SecondStopEndsTheNumber)
{
    EXPECT_EQ(_wtof(u"1.2.3"), 1.2);
}

TEST(WideTextToDouble, IncompleteExponentIsIgnored)
{
    EXPECT_EQ(_wtof(u"1e"), 1.0);
    EXPECT_EQ(_wtof(u"2.5e+"), 2.5);
    EXPECT_EQ(_wtof(u"3E-x"), 3.0);
    EXPECT_EQ(_wtof(u"4e 2"), 4.0);
}

TEST(WideTextToDouble, WordsAreNoNumbers)
{
    EXPECT_EQ(_wtof(u"inf"), 0.0);
    EXPECT_EQ(_wtof(u"-infinity"), 0.0);
    EXPECT_EQ(_wtof(u"nan"), 0.0);
    EXPECT_EQ(_wtof(u""), 0.0);
    EXPECT_EQ(_wtof(u"0x10"), 0.0);
}

TEST(WideTextToDouble, TakesOneSignAndAsciiDigitsOnly)
{
    EXPECT_EQ(_wtof(u"+-1.5"), 0.0);
    EXPECT_EQ(_wtof(u"１.5"), 0.0);
    EXPECT_EQ(_wtof(u"1.５"), 1.0);
}

TEST(WideTextToDouble, TooLargeGivesAnInfinityOfThatSign)
{
    EXPECT_EQ(_wtof(u"1e999"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(_wtof(u"-1e999"), -std::numeric_limits<double>::infinity());
    EXPECT_EQ(_wtof(u"1e99999999999999999999"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(_wtof(QString(400, u'9')), std::numeric_limits<double>::infinity());
}

TEST(WideTextToDouble, TooSmallGivesZero)
{
    EXPECT_EQ(_wtof(u"1e-999"), 0.0);
    EXPECT_EQ(_wtof(u"1e-99999999999999999999"), 0.0);
    EXPECT_EQ(_wtof(u"0e99999"), 0.0);
}

TEST(WideTextToDouble, IsTheNearestDouble)
{
    EXPECT_EQ(_wtof(u"0.1"), 0.1);
    EXPECT_EQ(_wtof(u"1.7976931348623157e308"), std::numeric_limits<double>::max());
    EXPECT_EQ(_wtof(u"4.9406564584124654e-324"), std::numeric_limits<double>::denorm_min());
}

TEST(WideTextToDouble, DoesNotDependOnTheLocale)
{
    const QLocale former;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    const double stop = _wtof(u"1.5");
    const double comma = _wtof(u"1,5");
    QLocale::setDefault(former);
    EXPECT_EQ(stop, 1.5);
    EXPECT_EQ(comma, 1.0);
}

} // namespace
