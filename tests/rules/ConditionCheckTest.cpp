#include "rules/CheckTesting.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using test::CodesOf;
using test::FindingsOf;
using test::PricedRule;
using test::Range;
using test::Value;

namespace {

/// The findings of one rule with one condition.
CStringArray CodesWith(const rules::Condition& condition)
{
    return CodesOf({PricedRule({condition})});
}

/// What takes the only finding of a rule with this condition away: the array of a ResetCondition.
CStringArray MendOf(const rules::Condition& condition)
{
    const auto findings = FindingsOf({PricedRule({condition})});
    EXPECT_EQ(findings.size(), 1U);
    if (findings.empty() || !findings.front().mend) return {};
    EXPECT_EQ(findings.front().mend->op, u"ResetCondition"_s);
    EXPECT_EQ(findings.front().mend->configId, 2);
    EXPECT_EQ(findings.front().mend->conditionId, 1);
    return findings.front().mend->array;
}

} // namespace

TEST(ConditionCheck, GoodConditionsOfBothFormsHaveNoFinding)
{
    EXPECT_EQ(CodesOf({PricedRule({Value(u"材质"_s, u"＝"_s, u"铜管"_s),
                                   Range(u"公称直径"_s, u"＞"_s, u"15"_s, u"≤"_s, u"32"_s)}),
                       PricedRule({Value(u"材质"_s, u"≠"_s, u"铜管"_s),
                                   Range(u"壁厚"_s, {}, {}, u"＜"_s, u"2.5"_s)})}),
              CStringArray());
}

TEST(ConditionCheck, RuleWithoutConditionsThatIsNotTheDefaultIsTold)
{
    EXPECT_TRUE(CodesOf({PricedRule({})}).contains(u"no-conditions@1"_s));
    EXPECT_EQ(CodesOf({}), CStringArray()) << "the default rule has none";
}

TEST(ConditionCheck, ConditionWithoutAttributeIsTold)
{
    EXPECT_EQ(CodesWith(Value(u" "_s, u"＝"_s, u"铜管"_s)), CStringArray{u"no-attribute@1"_s});
}

TEST(ConditionCheck, OperatorThatNobodyKnowsIsToldAndMendedWhereItsMeaningIsClear)
{
    EXPECT_EQ(CodesWith(Value(u"材质"_s, u"="_s, u"铜管"_s)), CStringArray{u"unknown-operator@1"_s});
    EXPECT_EQ(MendOf(Value(u"材质"_s, u"="_s, u"铜管"_s)),
              (CStringArray{u"材质"_s, u"1"_s, u"＝"_s, {}, {}, u"铜管"_s, {}, {}}));
    EXPECT_EQ(MendOf(Range(u"壁厚"_s, u">="_s, u"2"_s, u"＜"_s, u"3"_s)),
              (CStringArray{u"壁厚"_s, u"0"_s, {}, u"≥"_s, u"＜"_s, {}, u"2"_s, u"3"_s}));
    EXPECT_EQ(CodesWith(Value(u"材质"_s, {}, u"铜管"_s)), CStringArray{u"unknown-operator@1"_s});
    EXPECT_EQ(MendOf(Value(u"材质"_s, {}, u"铜管"_s)), CStringArray());
    EXPECT_EQ(CodesWith(Range(u"壁厚"_s, u"＜"_s, u"2"_s, {}, {})), CStringArray{u"unknown-operator@1"_s})
        << "known at the other place only";
    EXPECT_EQ(CodesWith(Range(u"壁厚"_s, u"?"_s, {}, u"≤"_s, u"3"_s)), CStringArray())
        << "the operator of a bound that is not there is of no account";
}

TEST(ConditionCheck, FaultsOfOneConditionAreMendedTogether)
{
    const auto findings = FindingsOf({PricedRule({Range(u"壁厚"_s, u">"_s, u"３"_s, u"≤"_s, u"2"_s)})});
    EXPECT_EQ(test::Codes(findings),
              (CStringArray{u"full-width-digits@1"_s, u"unknown-operator@1"_s, u"bounds-reversed@1"_s}));
    for (const rules::Finding& finding : findings) {
        ASSERT_TRUE(finding.mend);
        EXPECT_EQ(finding.mend->array,
                  (CStringArray{u"壁厚"_s, u"0"_s, {}, u"＞"_s, u"≤"_s, {}, u"2"_s, u"3"_s}));
    }
}

TEST(ConditionCheck, ValueThatIsEmptyIsTold)
{
    EXPECT_EQ(CodesWith(Value(u"材质"_s, u"＝"_s, u" "_s)), CStringArray{u"empty-value@1"_s});
    EXPECT_EQ(CodesWith(Value(u"材质"_s, u"≠"_s, {})),
              CStringArray({u"empty-value@1"_s, u"default-never-applies@2"_s}));
}

TEST(ConditionCheck, BoundThatIsNoNumberIsTold)
{
    EXPECT_EQ(CodesWith(Range(u"壁厚"_s, u"＞"_s, u"大"_s, u"≤"_s, u"3"_s)),
              CStringArray{u"bound-not-a-number@1"_s});
    EXPECT_EQ(CodesWith(Range(u"壁厚"_s, u"＞"_s, u"DN2"_s, {}, {})),
              CStringArray{u"bound-not-a-number@1"_s});
    rules::CheckFacts facts = test::KnownFacts();
    facts.attributes[test::PipeCategory][2].valueList = {u"DN1"_s, u"DN4"_s};
    EXPECT_EQ(CodesOf({PricedRule({Range(u"壁厚"_s, u"＞"_s, u"DN2"_s, {}, {})})}, facts), CStringArray())
        << "written as the value list writes numbers";
}

TEST(ConditionCheck, BoundsTheWrongWayRoundAreToldAndMended)
{
    EXPECT_EQ(CodesWith(Range(u"壁厚"_s, u"＞"_s, u"3"_s, u"≤"_s, u"2"_s)),
              CStringArray{u"bounds-reversed@1"_s});
    EXPECT_EQ(MendOf(Range(u"壁厚"_s, u"＞"_s, u"3"_s, u"≤"_s, u"2"_s)),
              (CStringArray{u"壁厚"_s, u"0"_s, {}, u"＞"_s, u"≤"_s, {}, u"2"_s, u"3"_s}));
    EXPECT_EQ(CodesWith(Range(u"壁厚"_s, u"＞"_s, u"2"_s, u"≤"_s, u"2.0"_s)),
              CStringArray{u"bounds-reversed@1"_s});
    EXPECT_EQ(MendOf(Range(u"壁厚"_s, u"＞"_s, u"2"_s, u"≤"_s, u"2.0"_s)), CStringArray());
    EXPECT_EQ(CodesWith(Range(u"壁厚"_s, u"≥"_s, u"2"_s, u"≤"_s, u"2"_s)), CStringArray()) << "2 itself";
}

TEST(ConditionCheck, RangeWithoutBoundsIsTold)
{
    EXPECT_EQ(CodesWith(Range(u"壁厚"_s, u"＞"_s, {}, u"≤"_s, {})), CStringArray{u"no-bounds@1"_s});
    EXPECT_EQ(CodesWith(Range(u"壁厚"_s, u"＞"_s, u"2"_s, u"≤"_s, {})), CStringArray());
}

TEST(ConditionCheck, ConditionsThatContradictEachOtherAreTold)
{
    EXPECT_EQ(CodesOf({PricedRule(
                  {Range(u"壁厚"_s, {}, {}, u"＜"_s, u"2"_s), Range(u"壁厚"_s, u"≥"_s, u"2"_s, {}, {})})}),
              CStringArray{u"contradiction@1"_s});
    EXPECT_EQ(
        CodesOf({PricedRule({Value(u"材质"_s, u"＝"_s, u"铜管"_s), Value(u"材质"_s, u"＝"_s, u"PPR管"_s)})}),
        CStringArray{u"contradiction@1"_s});
    EXPECT_EQ(CodesOf({PricedRule(
                  {Range(u"壁厚"_s, {}, {}, u"≤"_s, u"2"_s), Range(u"壁厚"_s, u"≥"_s, u"2"_s, {}, {})})}),
              CStringArray());
}

TEST(ConditionCheck, FullWidthDigitsAreToldAndMended)
{
    EXPECT_EQ(CodesWith(Value(u"公称直径"_s, u"＝"_s, u"６５"_s)), CStringArray{u"full-width-digits@1"_s});
    EXPECT_EQ(MendOf(Value(u"公称直径"_s, u"＝"_s, u"６５"_s))[5], u"65"_s);
    EXPECT_EQ(CodesWith(Value(u"公称直径"_s, u"＝"_s, u"65"_s)), CStringArray());
}

TEST(ConditionCheck, AttributeThatTheCategoryHasNotIsTold)
{
    EXPECT_EQ(CodesWith(Value(u"颜色"_s, u"＝"_s, u"红"_s)), CStringArray{u"unknown-attribute@1"_s});
    EXPECT_EQ(CodesWith(Value(u" 壁厚"_s, u"＝"_s, u"2"_s)), CStringArray()) << "as matching reads the name";
    rules::CheckFacts nothing;
    EXPECT_EQ(CodesOf({PricedRule({Value(u"颜色"_s, u"＝"_s, u"红"_s)})}, nothing), CStringArray())
        << "nobody knows the category";
}

TEST(ConditionCheck, RangeOnAnAttributeForEqualityOnlyIsTold)
{
    EXPECT_EQ(CodesWith(Range(u"材质"_s, u"＞"_s, u"2"_s, {}, {})), CStringArray{u"range-not-allowed@1"_s});
    EXPECT_EQ(CodesWith(Range(u"壁厚"_s, u"＞"_s, u"2"_s, {}, {})), CStringArray());
}

TEST(ConditionCheck, ValueOutsideItsListIsTold)
{
    EXPECT_EQ(CodesWith(Value(u"材质"_s, u"＝"_s, u"铅管"_s)), CStringArray{u"value-not-in-list@1"_s});
    EXPECT_EQ(CodesWith(Value(u"材质"_s, u"＝"_s, u"ＰＰＲ管"_s)), CStringArray()) << "equal in matching";
    EXPECT_EQ(CodesWith(Value(u"公称直径"_s, u"≠"_s, u"65.0"_s)), CStringArray());
    EXPECT_EQ(CodesWith(Value(u"壁厚"_s, u"＝"_s, u"7"_s)), CStringArray()) << "it has no list";
}

TEST(ConditionCheck, ConditionOfADefaultRuleIsOfNoAccount)
{
    rules::SmallCategory category = test::WithDefault({});
    category.rules.back().conditions.push_back(Value({}, u"="_s, {}));
    EXPECT_EQ(test::Codes(rules::Check(test::ConfigurationWith(category), {}, test::KnownFacts())),
              CStringArray());
}

TEST(ConditionCheck, ConditionThatAnIdDoesNotReachHasNoMend)
{
    rules::Rule rule =
        PricedRule({Value(u"材质"_s, u"="_s, u"铜管"_s), Range(u"壁厚"_s, u"＞"_s, u"2"_s, {}, {})});
    rule.conditions[1].id = rule.conditions[0].id;
    const auto findings = FindingsOf({rule});
    EXPECT_EQ(test::Codes(findings), (CStringArray{u"repeated-id@1"_s, u"unknown-operator@1"_s}));
    EXPECT_FALSE(findings[1].mend);
}
