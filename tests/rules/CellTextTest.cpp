#include "rules/match/CellText.h"
#include "support/PrintText.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using rules::Decimal;
using rules::NumberReader;

namespace {

/// The number that a reader of such a value list reads, as text; "none" for none.
CString Read(const CStringArray& valueList, const CString& text)
{
    const auto number = NumberReader(valueList).Read(text);
    return number ? number->ToText() : u"none"_s;
}

} // namespace

TEST(CellText, PlainNumberTakesBlanksAroundAndFullWidthForms)
{
    EXPECT_EQ(rules::PlainNumber(u"\u3000 65\u00A0"), Decimal(65));
    EXPECT_EQ(rules::PlainNumber(u"－６５．０"), Decimal(-65));
    EXPECT_FALSE(rules::PlainNumber(u"5²"));
    EXPECT_FALSE(rules::PlainNumber(u"DN50"));
    EXPECT_FALSE(rules::PlainNumber(u"50mm"));
    EXPECT_FALSE(rules::PlainNumber(u""));
}

TEST(CellText, NumberStandsBehindWhatTheValueListPutsBeforeOne)
{
    const CStringArray list{u"DN15"_s, u"DN20"_s, u"De 63"_s};
    EXPECT_EQ(Read(list, u"DN50"_s), u"50"_s);
    EXPECT_EQ(Read(list, u" DN 50.5 "_s), u"50.5"_s);
    EXPECT_EQ(Read(list, u"ＤＮ５０"_s), u"50"_s);
    EXPECT_EQ(Read(list, u"De63"_s), u"63"_s);
    EXPECT_EQ(Read(list, u"50"_s), u"50"_s);
    EXPECT_EQ(Read(list, u"dn50"_s), u"none"_s) << "letter case counts";
    EXPECT_EQ(Read(list, u"DN50mm"_s), u"none"_s);
    EXPECT_EQ(Read(list, u"DN"_s), u"none"_s);
    EXPECT_EQ(Read(list, u"DN50×40"_s), u"none"_s) << "two numbers are none";
}

TEST(CellText, NumberStandsBeforeTheUnitOfTheValueList)
{
    const CStringArray list{u"15mm"_s, u"70℃防火阀"_s};
    EXPECT_EQ(Read(list, u"50mm"_s), u"50"_s);
    EXPECT_EQ(Read(list, u"50 mm"_s), u"50"_s);
    EXPECT_EQ(Read(list, u"-5mm"_s), u"-5"_s);
    EXPECT_EQ(Read(list, u"280℃防火阀"_s), u"280"_s);
    EXPECT_EQ(Read(list, u"50cm"_s), u"none"_s);
    EXPECT_EQ(Read(list, u"50"_s), u"50"_s);
}

TEST(CellText, ListOfPlainNumbersTeachesNoOtherForm)
{
    EXPECT_EQ(Read({u"15"_s, u"-20"_s, u"2.5"_s}, u"DN50"_s), u"none"_s);
    EXPECT_EQ(Read({}, u"DN50"_s), u"none"_s);
    EXPECT_EQ(Read({u"SYWV-75-5"_s}, u"SYWV-75-9"_s), u"none"_s) << "the list's value has two numbers";
}

TEST(CellText, SignBehindOtherTextIsPartOfIt)
{
    EXPECT_EQ(Read({u"SC-80"_s}, u"SC-100"_s), u"100"_s);
    EXPECT_EQ(Read({u"SC-80"_s}, u"SC100"_s), u"none"_s);
    EXPECT_EQ(Read({u"70℃"_s}, u"-5℃"_s), u"-5"_s);
    EXPECT_EQ(Read({u"70℃"_s}, u"- 5℃"_s), u"none"_s);
}
