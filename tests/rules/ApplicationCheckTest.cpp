#include "rules/CheckTesting.h"
#include "rules/check/Gaps.h"
#include "rules/check/RuleCoverage.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using test::CodesOf;
using test::FindingsOf;
using test::Material;
using test::PricedRule;
using test::Range;
using test::Value;

namespace {

/// 壁厚, which has no value list.
rules::Condition Thickness(const CString& lowerSign, const CString& lower, const CString& upperSign,
                           const CString& upper)
{
    return Range(u"壁厚"_s, lowerSign, lower, upperSign, upper);
}

rules::Condition Diameter(const CString& lowerSign, const CString& lower, const CString& upperSign,
                          const CString& upper)
{
    return Range(u"公称直径"_s, lowerSign, lower, upperSign, upper);
}

} // namespace

TEST(ApplicationCheck, RuleHiddenByOneBeforeItNeverApplies)
{
    const auto findings = FindingsOf({PricedRule({Material(u"铜管"_s)}), PricedRule({Material(u"PPR管"_s)}),
                                      PricedRule({Material(u"PPR管"_s), Diameter({}, {}, u"≤"_s, u"20"_s)})});
    EXPECT_EQ(test::Codes(findings), (CStringArray{u"number-two-features@2"_s, u"never-applies@3"_s}));
    EXPECT_EQ(findings[1].others, std::vector{2});
    EXPECT_TRUE(findings[1].text.contains(u"第 2 条"_s));
    ASSERT_TRUE(findings[1].mend);
    EXPECT_EQ(findings[1].mend->op, u"DelConfig"_s);
    EXPECT_EQ(findings[1].mend->configId, 4);
}

TEST(ApplicationCheck, RuleThatNarrowsOneBehindItIsNoFinding)
{
    EXPECT_EQ(CodesOf({PricedRule({Material(u"PPR管"_s), Diameter({}, {}, u"≤"_s, u"20"_s)}),
                       PricedRule({Material(u"PPR管"_s)})}),
              CStringArray());
}

TEST(ApplicationCheck, RuleHiddenBySeveralTogetherNamesTheSmallestSet)
{
    const auto findings = FindingsOf({PricedRule({Thickness({}, {}, u"＜"_s, u"2"_s)}),
                                      PricedRule({Thickness({}, {}, u"≤"_s, u"3"_s)}),
                                      PricedRule({Thickness(u"＞"_s, u"3"_s, u"＜"_s, u"4"_s)}),
                                      PricedRule({Thickness(u"≥"_s, u"4"_s, {}, {})}),
                                      PricedRule({Thickness(u"≥"_s, u"1"_s, u"≤"_s, u"3.5"_s)})});
    ASSERT_EQ(test::Codes(findings), CStringArray{u"never-applies@5"_s});
    EXPECT_EQ(findings[0].others, (std::vector{2, 3}));
}

TEST(ApplicationCheck, EndsOfRangesAreExact)
{
    const auto hidden = [](const CString& sign) {
        return CodesOf({PricedRule({Thickness({}, {}, u"＜"_s, u"3"_s)}),
                        PricedRule({Thickness(sign, u"3"_s, {}, {})}),
                        PricedRule({Thickness(u"≥"_s, u"2"_s, u"≤"_s, u"4"_s)})});
    };
    EXPECT_TRUE(hidden(u"≥"_s).contains(u"never-applies@3"_s));
    EXPECT_FALSE(hidden(u"＞"_s).contains(u"never-applies@3"_s)) << "3 itself is left";
}

TEST(ApplicationCheck, ValuesHideARangeOnlyWhereTheyAreAllOfIt)
{
    EXPECT_TRUE(CodesOf({PricedRule({Value(u"壁厚"_s, u"＝"_s, u"3.0"_s)}),
                         PricedRule({Thickness(u"≥"_s, u"3"_s, u"≤"_s, u"3"_s)})})
                    .contains(u"never-applies@2"_s));
    EXPECT_FALSE(CodesOf({PricedRule({Value(u"壁厚"_s, u"＝"_s, u"3"_s)}),
                          PricedRule({Thickness(u"≥"_s, u"3"_s, u"≤"_s, u"3.5"_s)})})
                     .contains(u"never-applies@2"_s));
}

TEST(ApplicationCheck, RangeWithoutBoundsTakesAllNumbersAlsoWhereNobodyNamesOne)
{
    const rules::Rule anyNumber = PricedRule({Thickness({}, {}, {}, {})});
    EXPECT_TRUE(CodesOf({anyNumber, anyNumber}).contains(u"never-applies@2"_s));
    const CStringArray texts = CodesOf({anyNumber, PricedRule({Value(u"壁厚"_s, u"＝"_s, u"薄"_s)})});
    EXPECT_EQ(texts, CStringArray{u"no-bounds@1"_s}) << "texts are left for the rules behind";
    const auto findings = FindingsOf({PricedRule({Material(u"铜管"_s)}), anyNumber});
    ASSERT_EQ(test::Codes(findings), (CStringArray{u"partly-hidden@2"_s, u"no-bounds@2"_s}));
    EXPECT_TRUE(findings[0].text.contains(u"材质不是铜管（包括没有填写的），且壁厚为数字"_s))
        << findings[0].text.toStdString();
}

TEST(ApplicationCheck, ComponentsWithoutTheAttributeAreLeftByEverySign)
{
    const auto findings =
        FindingsOf({PricedRule({Material(u"铜管"_s)}), PricedRule({Material(u"铜管"_s, u"≠"_s)}),
                    PricedRule({Diameter({}, {}, u"≤"_s, u"80"_s)})});
    EXPECT_EQ(test::Codes(findings), (CStringArray{u"partly-hidden@3"_s, u"default-never-applies@4"_s}));
    EXPECT_TRUE(findings[0].text.contains(u"材质没有填写，且公称直径≤80"_s))
        << findings[0].text.toStdString();
}

TEST(ApplicationCheck, HiddenRuleWhoseIdIsNotItsOwnHasNoMend)
{
    rules::SmallCategory category =
        test::WithDefault({PricedRule({Material(u"铜管"_s)}), PricedRule({Material(u"铜管"_s)})});
    category.rules[1].id = category.rules[0].id;
    const auto findings = rules::Check(test::ConfigurationWith(category), {}, test::KnownFacts());
    EXPECT_EQ(test::Codes(findings), (CStringArray{u"repeated-id@2"_s, u"never-applies@2"_s}));
    EXPECT_FALSE(findings[1].mend);
}

TEST(ApplicationCheck, OverlapTellsWhatIsLeft)
{
    const auto findings = FindingsOf({PricedRule({Diameter({}, {}, u"≤"_s, u"25"_s)}),
                                      PricedRule({Diameter(u"≥"_s, u"20"_s, u"≤"_s, u"32"_s)})});
    ASSERT_EQ(test::Codes(findings), CStringArray{u"partly-hidden@2"_s});
    EXPECT_TRUE(findings[0].text.contains(u"剩下的是：25＜公称直径≤32"_s)) << findings[0].text.toStdString();
    EXPECT_EQ(findings[0].others, std::vector{1});
    EXPECT_EQ(CodesOf({PricedRule({Diameter({}, {}, u"≤"_s, u"20"_s)}),
                       PricedRule({Diameter(u"＞"_s, u"20"_s, u"≤"_s, u"32"_s)})}),
              CStringArray());
}

TEST(ApplicationCheck, DefaultRuleBehindRulesForEveryTextIsTold)
{
    const auto findings =
        FindingsOf({PricedRule({Material(u"铜管"_s)}), PricedRule({Material(u"铜管"_s, u"≠"_s)})});
    ASSERT_EQ(test::Codes(findings), CStringArray{u"default-never-applies@3"_s});
    EXPECT_TRUE(findings[0].text.contains(u"缺少属性"_s));
    EXPECT_EQ(CodesOf({PricedRule({Material(u"铜管"_s, u"≠"_s)})}), CStringArray());
}

TEST(ApplicationCheck, DefaultRuleBehindARuleWithoutConditionsNeverApplies)
{
    const auto findings = FindingsOf({PricedRule({})});
    ASSERT_EQ(test::Codes(findings), (CStringArray{u"no-conditions@1"_s, u"default-never-applies@2"_s}));
    EXPECT_TRUE(findings[1].text.contains(u"第 1 条"_s));
}

TEST(ApplicationCheck, NumbersLeftOutBetweenRangesAreAGap)
{
    const auto findings = FindingsOf({PricedRule({Thickness({}, {}, u"≤"_s, u"2"_s)}),
                                      PricedRule({Thickness(u"＞"_s, u"2.5"_s, {}, {})})});
    ASSERT_EQ(test::Codes(findings), CStringArray{u"gap@1"_s});
    EXPECT_TRUE(findings[0].text.startsWith(u"2＜壁厚≤2.5 没有规则"_s)) << findings[0].text.toStdString();
    EXPECT_EQ(findings[0].others, std::vector{2});
    EXPECT_EQ(CodesOf({PricedRule({Thickness({}, {}, u"≤"_s, u"2"_s)}),
                       PricedRule({Thickness(u"＞"_s, u"2"_s, {}, {})})}),
              CStringArray());
}

TEST(ApplicationCheck, GapOfOneNumberIsFound)
{
    const auto findings = FindingsOf(
        {PricedRule({Thickness({}, {}, u"＜"_s, u"2"_s)}), PricedRule({Thickness(u"＞"_s, u"2"_s, {}, {})})});
    ASSERT_EQ(test::Codes(findings), CStringArray{u"gap@1"_s});
    EXPECT_TRUE(findings[0].text.startsWith(u"壁厚＝2 没有规则"_s)) << findings[0].text.toStdString();
}

TEST(ApplicationCheck, NumbersBetweenTwoOfTheValueListAreNoGap)
{
    EXPECT_EQ(CodesOf({PricedRule({Diameter({}, {}, u"≤"_s, u"65"_s)}),
                       PricedRule({Diameter(u"≥"_s, u"80"_s, {}, {})})}),
              CStringArray());
    const auto findings = FindingsOf(
        {PricedRule({Diameter({}, {}, u"≤"_s, u"25"_s)}), PricedRule({Diameter(u"≥"_s, u"80"_s, {}, {})})});
    ASSERT_EQ(test::Codes(findings), CStringArray{u"gap@1"_s});
    EXPECT_TRUE(findings[0].text.startsWith(u"公称直径＝32、65 没有规则"_s))
        << findings[0].text.toStdString();
}

TEST(ApplicationCheck, GapIsToldForTheComponentsThatFallIntoIt)
{
    const auto findings = FindingsOf(
        {PricedRule({Thickness({}, {}, u"≤"_s, u"2"_s)}), PricedRule({Thickness(u"＞"_s, u"3"_s, {}, {})}),
         PricedRule({Material(u"铜管"_s), Thickness(u"＞"_s, u"2"_s, u"≤"_s, u"3"_s)})});
    ASSERT_EQ(test::Codes(findings), CStringArray{u"gap@1"_s});
    EXPECT_TRUE(findings[0].text.contains(u"构件是：材质不是铜管（包括没有填写的）"_s))
        << findings[0].text.toStdString();
}

TEST(ApplicationCheck, NumbersAboveTheLastRangeAreNoGap)
{
    EXPECT_EQ(CodesOf({PricedRule({Thickness(u"＞"_s, u"1"_s, u"≤"_s, u"2"_s)})}), CStringArray());
}

TEST(ApplicationCheck, SingleNumbersOfAnAttributeWithoutAListHaveNoGapBetweenThem)
{
    EXPECT_EQ(CodesOf({PricedRule({Value(u"壁厚"_s, u"＝"_s, u"2"_s)}),
                       PricedRule({Value(u"壁厚"_s, u"＝"_s, u"3"_s)})}),
              CStringArray{u"number-two-features@2"_s});
}

TEST(ApplicationCheck, WhatTheEffortDoesNotDoForIsNotDecidedAndNamedAsSuch)
{
    const std::vector<rules::Rule> list{PricedRule({Thickness({}, {}, u"≤"_s, u"2"_s)}),
                                        PricedRule({Thickness(u"≥"_s, u"3"_s, {}, {})}),
                                        PricedRule({Thickness(u"＞"_s, u"2"_s, u"＜"_s, u"3"_s)}),
                                        PricedRule({Thickness(u"≥"_s, u"1"_s, u"≤"_s, u"4"_s)})};
    EXPECT_EQ(CodesOf(list), CStringArray{u"never-applies@4"_s});
    rules::CheckFacts facts = test::KnownFacts();
    facts.effort = 0;
    EXPECT_EQ(CodesOf(list, facts), CStringArray{u"not-decided@4"_s});
    const std::vector<rules::Rule> withGap{
        PricedRule({Thickness({}, {}, u"≤"_s, u"2"_s)}), PricedRule({Thickness(u"＞"_s, u"3"_s, {}, {})}),
        PricedRule({Material(u"铜管"_s), Thickness(u"＞"_s, u"2"_s, u"≤"_s, u"3"_s)})};
    EXPECT_EQ(CodesOf(withGap), CStringArray{u"gap@1"_s});
    EXPECT_EQ(CodesOf(withGap, facts), CStringArray{u"not-decided"_s});
}

TEST(ApplicationCheck, SmallestSetThatIsNotProvenIsToldAsSuch)
{
    const std::vector<rules::Rule> list{PricedRule({Thickness({}, {}, u"≤"_s, u"2"_s)}),
                                        PricedRule({Thickness(u"≥"_s, u"3"_s, {}, {})}),
                                        PricedRule({Thickness(u"＞"_s, u"2"_s, u"＜"_s, u"3"_s)}),
                                        PricedRule({Thickness(u"≥"_s, u"1"_s, u"≤"_s, u"4"_s)})};
    const rules::SmallCategoryPtr category = test::CategoryOf(list);
    const rules::CellSpace space(*category, {});
    const rules::RegionIndex index(space, list.size());
    const auto usual = rules::CoverageOf(index);
    EXPECT_TRUE(usual[3].isSmallest);
    EXPECT_EQ(usual[3].hiders, (std::vector<std::size_t>{0, 1, 2}));
    bool isUnproven = false;
    for (long long effort = 20; effort < 20'000; effort += 20) {
        const auto some = rules::CoverageOf(index, effort);
        if (some[3].state != rules::RuleCoverage::State::Hidden) continue;
        EXPECT_EQ(some[3].hiders, usual[3].hiders) << "all three are needed";
        isUnproven = isUnproven || !some[3].isSmallest;
    }
    EXPECT_TRUE(isUnproven);
}
