#include "rules/model/Decimal.h"
#include "support/PrintText.h"

#include <gtest/gtest.h>

#include <random>

using namespace Qt::StringLiterals;
using rules::Decimal;

namespace {

Decimal D(const CString& text)
{
    const auto number = Decimal::Parse(text);
    EXPECT_TRUE(number) << text.toStdString();
    return number.value_or(Decimal());
}

} // namespace

TEST(Decimal, ReadsSignDigitsAndOnePoint)
{
    for (const auto& [text, shortest] : std::vector<std::pair<CString, CString>>{
             {u"0"_s, u"0"_s},
             {u"-0.00"_s, u"0"_s},
             {u"007"_s, u"7"_s},
             {u"+5"_s, u"5"_s},
             {u"5."_s, u"5"_s},
             {u".5"_s, u"0.5"_s},
             {u"-1.50"_s, u"-1.5"_s},
             {u"100"_s, u"100"_s},
             {u"0.001"_s, u"0.001"_s},
             {u"123456789012345678901234567890.10"_s, u"123456789012345678901234567890.1"_s}})
        EXPECT_EQ(D(text).ToText(), shortest);
}

TEST(Decimal, RefusesWhatIsNoPlainNumber)
{
    for (const CString& text : {u""_s, u"."_s, u"-"_s, u"+."_s, u"1e3"_s, u"1,000"_s, u" 1"_s, u"1 "_s,
                                u"1.2.3"_s, u"--1"_s, u"DN50"_s, u"６５"_s, u"nan"_s, u"0x10"_s, u"5²"_s})
        EXPECT_FALSE(Decimal::Parse(text)) << text.toStdString();
}

TEST(Decimal, ComparesByValueAtAnyLength)
{
    EXPECT_EQ(D(u"1.50"_s), D(u"1.5"_s));
    EXPECT_EQ(D(u"-0"_s), Decimal());
    EXPECT_LT(D(u"-1"_s), D(u"-0.999999999999999999999999"_s));
    EXPECT_GT(D(u"65.0000000000000000001"_s), D(u"65"_s));
    EXPECT_LT(D(u"99999999999999999999"_s), D(u"100000000000000000000"_s));
    EXPECT_LT(D(u"0.1"_s), D(u"0.10000000000000000000000000000000000001"_s));
    EXPECT_GT(D(u"1000000000000000000"_s), D(u"0.0000000000000000001"_s));
}

TEST(Decimal, AddsAndMultipliesWithoutLoss)
{
    Decimal sum;
    for (int i = 0; i < 1000; ++i)
        sum += D(u"0.1"_s);
    EXPECT_EQ(sum, Decimal(100));
    EXPECT_EQ((D(u"999999999999999999"_s) + Decimal(1)).ToText(), u"1000000000000000000"_s);
    EXPECT_EQ((D(u"9223372036854775807"_s) + D(u"9223372036854775807"_s)).ToText(),
              u"18446744073709551614"_s);
    EXPECT_EQ((D(u"10000000000000000000"_s) - D(u"9999999999999999999.5"_s)).ToText(), u"0.5"_s);
    EXPECT_EQ((D(u"-0.3"_s) * D(u"0.02"_s)).ToText(), u"-0.006"_s);
    EXPECT_EQ((D(u"3000000001"_s) * D(u"-3000000001"_s)).ToText(), u"-9000000006000000001"_s);
    EXPECT_EQ((D(u"4000000000"_s) * D(u"4000000000"_s)).ToText(), u"16000000000000000000"_s);
    EXPECT_EQ((-D(u"-12345678901234567890"_s)).ToText(), u"12345678901234567890"_s);
}

TEST(Decimal, RoundsAHalfAwayFromZero)
{
    EXPECT_EQ(D(u"0.125"_s).ToText(2), u"0.13"_s);
    EXPECT_EQ(D(u"-0.125"_s).ToText(2), u"-0.13"_s);
    EXPECT_EQ(D(u"0.1249999999999999999999999"_s).ToText(2), u"0.12"_s);
    EXPECT_EQ(D(u"2.5"_s).ToText(0), u"3"_s);
    EXPECT_EQ(D(u"2"_s).ToText(3), u"2.000"_s);
    EXPECT_EQ(D(u"1.5"_s).ToText(2), u"1.50"_s);
    EXPECT_EQ(D(u"-0.004"_s).ToText(2), u"0.00"_s);
    EXPECT_EQ(D(u"999.995"_s).ToText(2), u"1000.00"_s);
}

TEST(Decimal, DividesExactlyWhereItCanAndToFortyDigitsElse)
{
    EXPECT_EQ(D(u"25"_s).DividedBy(Decimal(10))->ToText(), u"2.5"_s);
    EXPECT_EQ(D(u"-1"_s).DividedBy(D(u"0.008"_s))->ToText(), u"-125"_s);
    EXPECT_EQ(Decimal(2).DividedBy(Decimal(3))->ToText(), u"0."_s + CString(39, u'6') + u'7');
    EXPECT_FALSE(Decimal(1).DividedBy(D(u"0.00"_s)));
}

// Short and long numbers go different ways inside; the same laws hold for both and across them.
TEST(Decimal, KeepsTheLawsOfArithmeticOnRandomNumbers)
{
    const unsigned seed = std::random_device{}();
    RecordProperty("seed", static_cast<int>(seed));
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const auto number = [&random] {
        CString text = random() % 2 == 0 ? u"-"_s : CString();
        for (auto digits = random() % 24 + 1; digits > 0; --digits)
            text += QChar(static_cast<char16_t>(u'0' + random() % 10));
        text += u'.';
        for (auto digits = random() % 12; digits > 0; --digits)
            text += QChar(static_cast<char16_t>(u'0' + random() % 10));
        return D(text);
    };
    for (int i = 0; i < 3000; ++i) {
        const Decimal a = number();
        const Decimal b = number();
        const Decimal c = number();
        ASSERT_EQ(a + b, b + a);
        ASSERT_EQ((a + b) + c, a + (b + c));
        ASSERT_EQ(a * (b + c), a * b + a * c);
        ASSERT_EQ(a - a, Decimal());
        ASSERT_EQ(a < b, (a - b) < Decimal());
        ASSERT_EQ(D(a.ToText()), a);
        ASSERT_EQ(*(a * b).DividedBy(b.IsZero() ? Decimal(1) : b), b.IsZero() ? a * b : a);
    }
}

TEST(Decimal, LongSumsAreExactAndLeaveTheirCopiesAlone)
{
    const Decimal large = *Decimal::Parse(u"987654321012345.678");
    Decimal sum;
    Decimal copy;
    for (int i = 0; i < 100'000; ++i) {
        sum += large;
        if (i == 50'000) copy = sum;
    }
    EXPECT_EQ(sum.ToText(), u"98765432101234567800"_s);
    EXPECT_EQ(copy.ToText(), u"49383703704938296245.678"_s);
    for (int i = 0; i < 100'000; ++i)
        sum += -large;
    EXPECT_TRUE(sum.IsZero()) << "what has become short again is a short number";
    sum += *Decimal::Parse(u"-0.5");
    EXPECT_EQ(sum.ToText(), u"-0.5"_s);
}

TEST(Decimal, ShortAndLongTextsAreReadAlike)
{
    for (const CString& text : {u"0"_s, u"-0"_s, u"+7.50"_s, u".5"_s, u"5."_s, u"000000000000000000012.500"_s,
                                u"-123456789012345678"_s, u"-1234567890123456789.5"_s}) {
        const auto number = Decimal::Parse(text);
        ASSERT_TRUE(number.has_value()) << text.toStdString();
        EXPECT_EQ(*number, *Decimal::Parse(u"0000000000000000000000"_s.insert(
                                               0, text.startsWith(u'-') ? u"-"_s : CString()) +
                                           text.mid(text.startsWith(u'-') || text.startsWith(u'+') ? 1 : 0)))
            << text.toStdString();
    }
    for (const CString& text :
         {u""_s, u"."_s, u"-"_s, u"+."_s, u"1.2.3"_s, u"1e3"_s, u"--1"_s, u" 1"_s, u"１"_s})
        EXPECT_FALSE(Decimal::Parse(text).has_value()) << text.toStdString();
}
