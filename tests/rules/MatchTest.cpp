#include "rules/match/Matching.h"
#include "rules/match/Trace.h"

#include "rules/RulesTesting.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using rules::AttributeFacts;
using rules::Cell;
using rules::NoRule;
using rules::Reason;
using test::RuleOf;

namespace {

const CString MaterialName = u"材质"_s;
const CString DiameterName = u"公称直径"_s;

/// Whether a rule of that one condition applies to a component with that cell; all ways of asking must agree.
bool Holds(const rules::Condition& condition, const Cell& cell, const CStringArray& valueList = {},
           Reason* reason = nullptr)
{
    const rules::CategoryFacts facts{{.name = condition.attribute, .valueList = valueList}};
    const auto matcher =
        std::make_shared<rules::CategoryMatcher>(test::CategoryOf({RuleOf({condition})}), facts);
    const std::vector<Cell> cells(matcher->Attributes().size(), cell);
    const bool holds = matcher->Match(cells) == 0;
    rules::Matching matching(matcher);
    std::vector<rules::Matching::Value> values;
    for (std::size_t i = 0; i < cells.size(); ++i)
        values.push_back(cell ? matching.Resolve(i, *cell) : rules::Matching::Missing);
    EXPECT_EQ(matching.Match(values) == 0, holds);
    const rules::Trace trace = rules::Explain(*matcher, cells);
    EXPECT_EQ(trace.applies == 0, holds);
    const rules::RuleTrace& told = holds ? trace.applied : trace.before.at(0);
    EXPECT_EQ(told.verdicts.at(0).holds, holds);
    if (reason != nullptr) *reason = told.verdicts.at(0).reason;
    return holds;
}

Reason ReasonFor(const rules::Condition& condition, const Cell& cell, const CStringArray& valueList = {})
{
    Reason reason = Reason::Different;
    Holds(condition, cell, valueList, &reason);
    return reason;
}

rules::Condition Is(const CString& value)
{
    return test::Value(MaterialName, u"＝"_s, value);
}

rules::Condition IsNot(const CString& value)
{
    return test::Value(MaterialName, u"≠"_s, value);
}

rules::Condition Between(const CString& lower, const CString& upper)
{
    return test::Range(DiameterName, u"＞"_s, lower, u"≤"_s, upper);
}

/// The rule that a component of that material gets.
int Applies(std::vector<rules::Rule> list, const Cell& material)
{
    const rules::CategoryMatcher matcher(test::CategoryOf(std::move(list)), {});
    return matcher.Match(std::vector<Cell>(matcher.Attributes().size(), material));
}

} // namespace

TEST(WhichRule, FirstInListOrderWhoseConditionsAllHold)
{
    EXPECT_EQ(Applies({RuleOf({Is(u"a"_s)}), RuleOf({IsNot(u"b"_s)}), RuleOf({IsNot(u"c"_s)})}, u"c"_s), 1);
    EXPECT_EQ(Applies({RuleOf({IsNot(u"b"_s), IsNot(u"c"_s)}), RuleOf({IsNot(u"b"_s)})}, u"c"_s), 1);
}

TEST(WhichRule, RuleWithoutConditionsHoldsAlways)
{
    EXPECT_EQ(Applies({RuleOf({Is(u"a"_s)}), RuleOf({}), RuleOf({Is(u"b"_s)})}, u"b"_s), 1);
    EXPECT_EQ(Applies({RuleOf({}), RuleOf({}, true)}, {}), 0);
}

TEST(WhichRule, FirstDefaultRuleWhereverItStandsWhenNoOtherHolds)
{
    EXPECT_EQ(Applies({RuleOf({}, true), RuleOf({Is(u"a"_s)})}, u"a"_s), 1);
    EXPECT_EQ(Applies({RuleOf({Is(u"a"_s)}), RuleOf({Is(u"x"_s)}, true), RuleOf({}, true)}, u"b"_s), 1)
        << "the conditions of a default rule are of no account";
    EXPECT_EQ(Applies({RuleOf({Is(u"b"_s)}, true), RuleOf({IsNot(u"a"_s)})}, u"b"_s), 1);
}

TEST(WhichRule, NoneWhenNothingHoldsAndThereIsNoDefault)
{
    EXPECT_EQ(Applies({RuleOf({Is(u"a"_s)})}, u"b"_s), NoRule);
    EXPECT_EQ(Applies({}, u"b"_s), NoRule);
}

TEST(WhichRule, RuleThatCanNeverHoldIsPassedOver)
{
    EXPECT_EQ(Applies({RuleOf({test::Value(MaterialName, u"="_s, u"a"_s)}), RuleOf({Is(u"a"_s)})}, u"a"_s),
              1);
}

TEST(Equality, ComparesTextsWithoutBlanksAround)
{
    EXPECT_TRUE(Holds(Is(u" 镀锌钢管 "_s), u"\u3000镀锌钢管"_s));
    EXPECT_FALSE(Holds(Is(u"镀锌钢管"_s), u"镀锌 钢管"_s));
    EXPECT_FALSE(Holds(Is(u"DN50"_s), u"dn50"_s));
    EXPECT_EQ(ReasonFor(Is(u"a"_s), u" a"_s), Reason::Same);
    EXPECT_EQ(ReasonFor(Is(u"a"_s), u"b"_s), Reason::Different);
}

TEST(Equality, TwoTextsOfOneNumberAreEqualAndTheTraceSaysSo)
{
    EXPECT_TRUE(Holds(Is(u"50"_s), u"50.0"_s));
    EXPECT_TRUE(Holds(Is(u"50"_s), u"+050"_s));
    EXPECT_FALSE(Holds(Is(u"50"_s), u"50.0000000000000000000000001"_s));
    EXPECT_EQ(ReasonFor(Is(u"50"_s), u"50.0"_s), Reason::SameNumber);
    EXPECT_FALSE(Holds(IsNot(u"50"_s), u"50.0"_s));
    EXPECT_EQ(ReasonFor(IsNot(u"50"_s), u"50.0"_s), Reason::SameNumber);
}

TEST(Equality, CompatibilityFormsAreEqualAndTheTraceSaysSo)
{
    EXPECT_TRUE(Holds(Is(u"PE管"_s), u"ＰＥ管"_s));
    EXPECT_EQ(ReasonFor(Is(u"PE管"_s), u"ＰＥ管"_s), Reason::SameNormalised);
    EXPECT_EQ(ReasonFor(Is(u"65"_s), u"６５"_s), Reason::SameNumber);
    EXPECT_TRUE(Holds(Is(u"52"_s), u"5²"_s)) << "the same after normalisation";
    EXPECT_FALSE(Holds(Is(u"52.0"_s), u"5²"_s)) << "but no number";
    EXPECT_FALSE(Holds(IsNot(u"㎡"_s), u"m2"_s));
}

TEST(Equality, WritingOfTheValueListDoesNotCount)
{
    EXPECT_FALSE(Holds(Is(u"50"_s), u"DN50"_s, {u"DN15"_s}));
    EXPECT_TRUE(Holds(IsNot(u"50"_s), u"DN50"_s, {u"DN15"_s}));
}

TEST(Equality, EmptyValueEqualsNoCell)
{
    EXPECT_FALSE(Holds(Is({}), u"a"_s));
    EXPECT_FALSE(Holds(Is({}), u""_s));
    EXPECT_TRUE(Holds(IsNot({}), u"a"_s));
}

TEST(MissingCell, LetsNoConditionHold)
{
    for (const auto& condition : {Is(u"a"_s), IsNot(u"a"_s), Between({}, {}), Between(u"1"_s, u"2"_s)}) {
        EXPECT_FALSE(Holds(condition, {}));
        EXPECT_FALSE(Holds(condition, u""_s));
        EXPECT_FALSE(Holds(condition, u" \u3000"_s));
        EXPECT_EQ(ReasonFor(condition, {}), Reason::AttributeMissing);
        EXPECT_EQ(ReasonFor(condition, u" "_s), Reason::CellEmpty);
    }
}

TEST(Operator, MustBeOneThatTheEditorOffersAtItsPlace)
{
    for (const CString& sign : {u""_s, u"="_s, u"≥"_s, u" ＝"_s, u"！＝"_s}) {
        EXPECT_FALSE(Holds(test::Value(MaterialName, sign, u"1"_s), u"1"_s)) << sign.toStdString();
        EXPECT_EQ(ReasonFor(test::Value(MaterialName, sign, u"1"_s), u"1"_s), Reason::UnknownOperator);
    }
    for (const CString& sign : {u""_s, u">"_s, u"＜"_s, u"≤"_s, u"＝"_s})
        EXPECT_EQ(ReasonFor(test::Range(DiameterName, sign, u"1"_s, {}, {}), u"2"_s),
                  Reason::UnknownOperator);
    for (const CString& sign : {u""_s, u"<"_s, u"＞"_s, u"≥"_s, u"≠"_s})
        EXPECT_EQ(ReasonFor(test::Range(DiameterName, {}, {}, sign, u"3"_s), u"2"_s),
                  Reason::UnknownOperator);
}

TEST(Operator, OfABoundThatIsNotThereIsOfNoAccount)
{
    EXPECT_TRUE(Holds(test::Range(DiameterName, u"?"_s, {}, u"≤"_s, u"3"_s), u"2"_s));
    EXPECT_TRUE(Holds(test::Range(DiameterName, u"＞"_s, u"1"_s, {}, {}), u"2"_s));
}

TEST(Range, IncludesItsBoundsByTheOperatorsOnly)
{
    for (const auto& [value, strict, wide] :
         std::vector<std::tuple<CString, bool, bool>>{{u"50"_s, false, true},
                                                      {u"50.0000000000000000000001"_s, true, true},
                                                      {u"65"_s, false, true},
                                                      {u"64.9999999999999999999999"_s, true, true},
                                                      {u"49.99"_s, false, false},
                                                      {u"65.01"_s, false, false}}) {
        EXPECT_EQ(Holds(test::Range(DiameterName, u"＞"_s, u"50"_s, u"＜"_s, u"65"_s), value), strict);
        EXPECT_EQ(Holds(test::Range(DiameterName, u"≥"_s, u"50"_s, u"≤"_s, u"65"_s), value), wide);
    }
    EXPECT_EQ(ReasonFor(Between(u"50"_s, u"65"_s), u"50"_s), Reason::OutsideLower);
    EXPECT_EQ(ReasonFor(Between(u"50"_s, u"65"_s), u"66"_s), Reason::OutsideUpper);
}

TEST(Range, ComparesInDecimal)
{
    EXPECT_TRUE(Holds(test::Range(DiameterName, u"≥"_s, u"0.3"_s, {}, {}), u"0.30"_s));
    EXPECT_FALSE(
        Holds(test::Range(DiameterName, u"＞"_s, u"9007199254740992"_s, {}, {}), u"9007199254740992.0"_s));
    EXPECT_TRUE(
        Holds(test::Range(DiameterName, u"＞"_s, u"9007199254740992"_s, {}, {}), u"9007199254740993"_s));
}

TEST(Range, HoldsForNoTextThatIsNoNumber)
{
    EXPECT_FALSE(Holds(Between(u"1"_s, u"100"_s), u"五十"_s));
    EXPECT_EQ(ReasonFor(Between(u"1"_s, u"100"_s), u"DN50"_s), Reason::NotANumber);
    EXPECT_EQ(ReasonFor(Between({}, {}), u"大"_s), Reason::NotANumber);
}

TEST(Range, ReadsNumbersAsTheValueListWritesThem)
{
    EXPECT_TRUE(Holds(Between(u"40"_s, u"50"_s), u"DN50"_s, {u"DN15"_s}));
    EXPECT_TRUE(Holds(Between(u"DN40"_s, u"DN50"_s), u"50"_s, {u"DN15"_s}));
    EXPECT_TRUE(Holds(Between(u"40"_s, u"50"_s), u"50 mm"_s, {u"15mm"_s}));
    EXPECT_FALSE(Holds(Between(u"40"_s, u"63"_s), u"De63"_s, {u"DN15"_s}));
}

TEST(Range, WithoutABoundHoldsForAnyNumber)
{
    EXPECT_TRUE(Holds(Between({}, {}), u"-1000000"_s));
    EXPECT_TRUE(Holds(test::Range(DiameterName, u"?"_s, {}, u"?"_s, {}), u"６５"_s));
}

TEST(Range, WithABoundThatIsNoNumberHoldsForNothing)
{
    EXPECT_FALSE(Holds(Between(u"大"_s, {}), u"5"_s));
    EXPECT_EQ(ReasonFor(Between({}, u" "_s), u"5"_s), Reason::BoundNotANumber);
    EXPECT_EQ(ReasonFor(Between(u"DN40"_s, {}), u"50"_s), Reason::BoundNotANumber);
}

TEST(Range, WithBoundsTheWrongWayRoundHoldsForNothing)
{
    for (const CString& value : {u"5"_s, u"10"_s, u"15"_s, u"20"_s, u"25"_s})
        EXPECT_FALSE(Holds(Between(u"20"_s, u"10"_s), value));
    EXPECT_FALSE(Holds(Between(u"10"_s, u"10"_s), u"10"_s));
}

TEST(Attribute, WithoutANameLetsNoConditionHold)
{
    EXPECT_FALSE(Holds(test::Value({}, u"＝"_s, u"a"_s), u"a"_s));
    EXPECT_FALSE(Holds(test::Value(u" "_s, u"≠"_s, u"a"_s), u"b"_s));
    EXPECT_EQ(ReasonFor(rules::Condition{}, u"a"_s), Reason::NoAttribute);
}

TEST(Attribute, IsTheColumnOfItsNameElseOfItsCode)
{
    const rules::CategoryMatcher matcher(
        test::CategoryOf({RuleOf({Is(u"a"_s), test::Value(u"周长(mm)"_s, u"＝"_s, u"1"_s),
                                  test::Value(u"壁厚"_s, u"＝"_s, u"1"_s)})}),
        {{.name = MaterialName, .code = u"AM_Material"_s},
         {.name = u"周长(mm)"_s, .code = u"AM_Perimeter"_s}});
    using Columns = std::vector<std::optional<std::size_t>>;
    EXPECT_EQ(matcher.ColumnsFor({u"AM_Material"_s, u" 材质"_s, u"周长（mm）"_s}),
              (Columns{1, 2, std::nullopt}));
    EXPECT_EQ(matcher.ColumnsFor({u"AM_Perimeter"_s, u"AM_Material"_s, u"AM_Material"_s}),
              (Columns{1, 0, std::nullopt}));
    EXPECT_EQ(matcher.ColumnsFor({u"am_material"_s, u""_s}),
              (Columns{std::nullopt, std::nullopt, std::nullopt}));
}

TEST(Attribute, OwnNameIsNoColumn)
{
    const rules::CategoryMatcher matcher(
        test::CategoryOf({RuleOf({test::Value(u"具体构件"_s, u"＝"_s, u"JL-1"_s)})}), {});
    ASSERT_EQ(matcher.Attributes().size(), 1U);
    EXPECT_TRUE(matcher.Attributes()[0].isOwnName);
    EXPECT_FALSE(matcher.ColumnsFor({u"具体构件"_s})[0]);
    EXPECT_EQ(matcher.Match(std::vector<Cell>{u"JL-1"_s}), 0);
}

TEST(Attribute, TestedTwiceMustSatisfyBoth)
{
    const auto both = RuleOf({Between(u"10"_s, u"50"_s), test::Value(DiameterName, u"≠"_s, u"40"_s)});
    EXPECT_EQ(Applies({both}, u"40.0"_s), NoRule);
    EXPECT_EQ(Applies({both}, u"50"_s), 0);
    EXPECT_EQ(Applies({both}, u"60"_s), NoRule);
}

TEST(Trace, TellsTheFirstConditionThatFailedInEveryRuleBeforeTheOneThatApplies)
{
    const rules::CategoryMatcher matcher(
        test::CategoryOf({RuleOf({}, true), RuleOf({Is(u"PPR管"_s), Between(u"1"_s, u"2"_s)}),
                          RuleOf({Is(u"铜管"_s), Between(u"1"_s, u"2"_s)}), RuleOf({Is(u"铜管"_s)}),
                          RuleOf({})}),
        {});
    const std::vector<Cell> cells{u"铜管"_s, u"５０"_s};
    const rules::Trace trace = rules::Explain(matcher, cells);
    EXPECT_EQ(trace.applies, 3);
    EXPECT_EQ(trace.applied.rule, 3);
    ASSERT_EQ(trace.before.size(), 2U) << "default rules and those behind are not tried";
    EXPECT_EQ(trace.before[0].rule, 1);
    EXPECT_EQ(trace.before[0].failed, 0);
    EXPECT_EQ(trace.before[0].holding, 0);
    EXPECT_EQ(trace.before[1].failed, 1);
    EXPECT_EQ(trace.before[1].holding, 1);
    const rules::Condition& failed = matcher.Category().rules[2].conditions[1];
    EXPECT_EQ(rules::Describe(failed, trace.before[1].verdicts[1], trace.before[1].cells[1]),
              u"1＜公称直径≤2：构件的值是“５０”"_s);
}

TEST(Trace, TellsOfTheDefaultRuleWithoutConditionsOfItsOwn)
{
    const rules::CategoryMatcher matcher(test::CategoryOf({RuleOf({Is(u"a"_s)}), RuleOf({}, true)}), {});
    const rules::Trace trace = rules::Explain(matcher, std::vector<Cell>{{}});
    EXPECT_EQ(trace.applies, 1);
    EXPECT_EQ(trace.applied.rule, NoRule);
    ASSERT_EQ(trace.before.size(), 1U);
    EXPECT_EQ(rules::Describe(matcher.Category().rules[0].conditions[0], trace.before[0].verdicts[0], {}),
              u"材质＝a：构件没有这个属性"_s);
}
