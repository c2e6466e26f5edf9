#include "rules/bill/Formula.h"
#include "rules/bill/QuantityTable.h"
#include "rules/bill/Units.h"
#include "support/PrintText.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using rules::Decimal;
using rules::Quantity;
using rules::QuantityFault;

namespace {

/// The value of a formula whose names are all 7, as text; "none" for no formula.
CString Value(const CString& text)
{
    const auto formula = rules::Formula::Parse(text);
    if (!formula) return u"none"_s;
    const Quantity quantity = formula->Evaluate([](std::size_t) { return Quantity{Decimal(7)}; });
    return quantity.IsKnown() ? quantity.value.ToText() : u"fault"_s;
}

/// What a table gives for one formula and one component.
Quantity Ask(const CString& formula, const CStringArray& headers, const std::vector<CString>& cells,
             const rules::CalculationItems& items = {}, const rules::CategoryFacts& facts = {})
{
    rules::QuantityTable table(headers, facts, items);
    return table.Evaluate(table.Add(formula), cells);
}

CString Text(const Quantity& quantity)
{
    return quantity.IsKnown() ? quantity.value.ToText() : u"fault"_s;
}

const CString Length = u"管道长度"_s;
const CString Outer = u"管外径"_s;

} // namespace

TEST(Formula, FollowsTheOrderOfOperationsExactly)
{
    EXPECT_EQ(Value(u"1+2*3"_s), u"7"_s);
    EXPECT_EQ(Value(u"(1+2)*3"_s), u"9"_s);
    EXPECT_EQ(Value(u"10-4-3"_s), u"3"_s);
    EXPECT_EQ(Value(u"12/4/3"_s), u"1"_s);
    EXPECT_EQ(Value(u"-2*3+1"_s), u"-5"_s);
    EXPECT_EQ(Value(u"2*(-3)"_s), u"-6"_s);
    EXPECT_EQ(Value(u"+(2－－1)"_s), u"none"_s);
    EXPECT_EQ(Value(u"0.1+0.2"_s), u"0.3"_s);
    EXPECT_EQ(Value(u"管道长度＋３"_s), u"none"_s) << "digits are plain ones, as in the calculator";
    EXPECT_EQ(Value(u" （ 管道长度 ＋ 3 ） × 2 ÷ 4 "_s), u"5"_s);
    EXPECT_EQ(Value(CString(100'000, u'(') + u'1' + CString(100'000, u')')), u"1"_s);
}

TEST(Formula, RefusesWhatIsNone)
{
    for (const CString& text :
         {u""_s, u" "_s, u"1+"_s, u"*1"_s, u"(1"_s, u"1)"_s, u"()"_s, u"1 2"_s, u"a b"_s, u"--1"_s, u"1*-1"_s,
          u"1."_s, u".5"_s, u"1%2"_s, u"a(1)"_s, u"2a"_s})
        EXPECT_EQ(Value(text), u"none"_s) << text.toStdString();
}

TEST(Formula, DivisionByZeroGivesNoQuantity)
{
    EXPECT_EQ(Ask(u"1/(2-2)"_s, {}, {}).fault, QuantityFault::DivisionByZero);
}

TEST(QuantityTable, CalculationItemsExpandByTheirOwnRule)
{
    const rules::CalculationItems items{{Length, u"水平管长度+立管长度"_s}, {u"刷油面积"_s, u"2×管道长度"_s}};
    EXPECT_EQ(Text(Ask(u"刷油面积"_s, {u"水平管长度"_s, u"立管长度"_s}, {u"1.5"_s, u"２"_s}, items)), u"7"_s);
}

TEST(QuantityTable, ColumnOfTheItemsNameGoesBeforeItsRuleUnlessItsCellIsEmpty)
{
    const rules::CalculationItems items{{Length, u"a+b"_s}};
    const CStringArray headers{u"a"_s, u" 管道长度"_s, u"b"_s};
    EXPECT_EQ(Text(Ask(Length, headers, {u"1"_s, u"9"_s, u"2"_s}, items)), u"9"_s);
    EXPECT_EQ(Text(Ask(Length, headers, {u"1"_s, u" "_s, u"2"_s}, items)), u"3"_s);
}

TEST(QuantityTable, AttributesInMillimetresCountInMetres)
{
    const rules::CategoryFacts facts{
        {.name = Outer, .code = u"AM_Outer"_s, .unit = u"mm"_s, .valueList = {u"De20"_s}},
        {.name = u"层数"_s}};
    EXPECT_EQ(Text(Ask(u"管外径×2"_s, {Outer}, {u"114"_s}, {}, facts)), u"0.228"_s);
    EXPECT_EQ(Text(Ask(Outer, {u"AM_Outer"_s}, {u"De63"_s}, {}, facts)), u"0.063"_s);
    EXPECT_EQ(Text(Ask(u"层数"_s, {u"层数"_s}, {u"3"_s}, {}, facts)), u"3"_s);
    EXPECT_EQ(Text(Ask(Outer, {Outer}, {u"3"_s}, {{Outer, u"1"_s}}, facts)), u"3"_s)
        << "a calculation item is a quantity as it stands";
}

TEST(QuantityTable, TellsWhyThereIsNoQuantity)
{
    EXPECT_EQ(Ask(u" "_s, {}, {}).fault, QuantityFault::EmptyFormula);
    EXPECT_EQ(Ask(u"1+"_s, {}, {}).fault, QuantityFault::BadFormula);
    const Quantity unnamed = Ask(u"1+管道长度"_s, {u"a"_s}, {u"1"_s});
    EXPECT_EQ(unnamed.fault, QuantityFault::NameWithoutValue);
    EXPECT_EQ(unnamed.subject, Length);
    EXPECT_EQ(Ask(u"a"_s, {u"a"_s}, {u" "_s}).fault, QuantityFault::NameWithoutValue);
    EXPECT_EQ(Ask(u"a"_s, {u"a"_s}, {u"很长"_s}).fault, QuantityFault::ValueNotANumber);
    EXPECT_EQ(Ask(u"a"_s, {}, {}, {{u"a"_s, u"b"_s}, {u"b"_s, u"1+a"_s}}).fault, QuantityFault::Circular);
    EXPECT_EQ(Ask(u"a"_s, {}, {}, {{u"a"_s, u""_s}}).fault, QuantityFault::NameWithoutValue);
}

TEST(QuantityTable, ItemsThatStandOnOneAnotherManyTimesEndSoon)
{
    rules::CalculationItems sums;
    rules::CalculationItems products;
    for (int i = 0; i < 60; ++i) {
        const CString next = u"x%1"_s.arg(i + 1);
        sums[u"x%1"_s.arg(i)] = next + u'+' + next;
        products[u"x%1"_s.arg(i)] = next + u'*' + next;
    }
    EXPECT_EQ(Text(Ask(u"x0"_s, {u"x60"_s}, {u"1"_s}, sums)), u"1152921504606846976"_s);
    EXPECT_EQ(Ask(u"x0"_s, {u"x60"_s}, {u"3"_s}, products).fault, QuantityFault::TooLong);
}

TEST(UnitOfMeasure, RoundsByTheBaseUnitAndDividesByTheMultiple)
{
    const auto format = [](const CString& unit, const CString& sum) {
        return rules::UnitOfMeasure::Of(unit).Format(*Decimal::Parse(sum));
    };
    for (const CString& unit : {u"t"_s, u"T"_s, u"吨"_s, u"km"_s, u"千米"_s, u"公里"_s})
        EXPECT_EQ(format(unit, u"1.2345"_s), u"1.235"_s) << unit.toStdString();
    for (const CString& unit : {u"m"_s, u"m2"_s, u"m²"_s, u"㎡"_s, u"m3"_s, u"㎥"_s, u"kg"_s, u" M "_s,
                                u"米"_s, u"平方米"_s, u"立方米"_s, u"千克"_s, u"公斤"_s})
        EXPECT_EQ(format(unit, u"1.005"_s), u"1.01"_s) << unit.toStdString();
    for (const CString& unit : {u"个"_s, u"台"_s, u"系统"_s, u""_s})
        EXPECT_EQ(format(unit, u"2.5"_s), u"3"_s) << unit.toStdString();
    EXPECT_EQ(format(u"10m"_s, u"123.456"_s), u"12.346"_s);
    EXPECT_EQ(format(u"100kg"_s, u"50"_s), u"0.5000"_s);
    EXPECT_EQ(format(u"10套"_s, u"25"_s), u"2.5"_s) << "sets are whole, tens of sets are not";
    EXPECT_EQ(format(u"4个"_s, u"10"_s), u"2.5"_s);
    EXPECT_EQ(format(u"0m"_s, u"1"_s), u"1.00"_s);
}

TEST(UnitOfMeasure, CountsTheSameByItsSignAndByItsName)
{
    const auto counted = [](const CString& unit) { return rules::UnitOfMeasure::Of(unit).dimension; };
    for (const CString& unit : {u"t"_s, u"吨"_s, u"kg"_s, u"100kg"_s, u"千克"_s, u"公斤"_s})
        EXPECT_EQ(counted(unit), rules::Dimension::Weight) << unit.toStdString();
    for (const CString& unit : {u"m"_s, u"10m"_s, u"米"_s, u"km"_s, u"千米"_s, u"公里"_s})
        EXPECT_EQ(counted(unit), rules::Dimension::Length) << unit.toStdString();
    EXPECT_EQ(counted(u"平方米"_s), rules::Dimension::Area);
    EXPECT_EQ(counted(u"立方米"_s), rules::Dimension::Volume);
    EXPECT_EQ(counted(u"10套"_s), rules::Dimension::Count);
    for (const CString& unit : {u""_s, u"项"_s, u"系统"_s})
        EXPECT_EQ(counted(unit), rules::Dimension::Unknown) << unit.toStdString();
}
