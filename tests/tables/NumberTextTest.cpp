#include "tables/NumberText.h"

#include "support/PrintText.h"
#include "tables/Cell.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

using namespace Qt::StringLiterals;
using tables::IsShortestNumber;
using tables::NumberText;

TEST(NumberText, IsTheShortestExactFormWithoutExponent)
{
    const std::pair<const char*, CString> cases[] = {
        {"50", u"50"_s},
        {"50.0", u"50"_s},
        {"0050.100", u"50.1"_s},
        {"5E1", u"50"_s},
        {"1.5e-3", u"0.0015"_s},
        {"-0.0", u"0"_s},
        {"+7", u"7"_s},
        {".5", u"0.5"_s},
        {" 3 ", u"3"_s},
        {"0.10000000000000001", u"0.1"_s},
        {"30801001001", u"30801001001"_s},
        {"3.0801001001E10", u"30801001001"_s},
        {"123456789012345678", u"123456789012345678"_s},
        {"1E21", u"1000000000000000000000"_s},
        {"0", u"0"_s},
    };
    for (const auto& [stored, text] : cases)
        EXPECT_EQ(NumberText(stored), text) << stored;
}

TEST(NumberText, WhatIsNoNumberIsNone)
{
    for (const char* const text :
         {"", "x", "1x", "1,5", "--1", "1e", ".", "-", "NaN", "inf", "1E999", "0x10", "1 2"})
        EXPECT_EQ(NumberText(text), std::nullopt) << text;
}

TEST(NumberText, KnowsItsOwnForm)
{
    for (const CString& text : {u"0"_s, u"-5"_s, u"50"_s, u"0.5"_s, u"-0.25"_s, u"123456789012345678.5"_s})
        EXPECT_TRUE(IsShortestNumber(text)) << text.toStdString();
    for (const CString& text : {u""_s, u"00"_s, u"-0"_s, u"+5"_s, u"+.5"_s, u".5"_s, u"5."_s, u"5.0"_s,
                                u"1E3"_s, u"05"_s, u"５"_s, u"-.5"_s, u"-"_s, u"1-"_s})
        EXPECT_FALSE(IsShortestNumber(text)) << text.toStdString();
    EXPECT_EQ(tables::SignificantDigits(u"-0.00120"), 2);
    EXPECT_EQ(tables::SignificantDigits(u"1200"), 2);
    EXPECT_EQ(tables::SignificantDigits(u"1200.5"), 5);
    EXPECT_EQ(tables::SignificantDigits(u"0"), 0);
}

/// Any number comes back to the same binary value, by another conversion than the one under test.
TEST(NumberText, RandomNumbersKeepTheirValue)
{
    constexpr unsigned Seed = 20250101;
    SCOPED_TRACE(Seed);
    std::mt19937_64 random(Seed);
    std::uniform_real_distribution<double> exponent(-15, 18);
    for (int i = 0; i < 20000; ++i) {
        const double value = std::pow(10, exponent(random)) * (i % 2 == 0 ? 1 : -1);
        const std::optional<CString> text = NumberText(QByteArray::number(value, 'g', 17));
        ASSERT_TRUE(text.has_value());
        ASSERT_TRUE(IsShortestNumber(*text)) << text->toStdString();
        ASSERT_EQ(text->toDouble(), value) << text->toStdString();
    }
}

TEST(ColumnName, CountsInLetters)
{
    EXPECT_EQ(tables::ColumnName(0), u"A"_s);
    EXPECT_EQ(tables::ColumnName(25), u"Z"_s);
    EXPECT_EQ(tables::ColumnName(26), u"AA"_s);
    EXPECT_EQ(tables::ColumnName(701), u"ZZ"_s);
    EXPECT_EQ(tables::ColumnName(702), u"AAA"_s);
    EXPECT_EQ(tables::ColumnName(16383), u"XFD"_s);
}
