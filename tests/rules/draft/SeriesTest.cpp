#include "rules/draft/Series.h"

#include "rules/draft/DraftTesting.h"
#include "rules/match/CategoryMatcher.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace Qt::StringLiterals;
using rules::Rule;
using rules::SeriesForm;
using rules::SeriesPlan;
using test::After;
using test::DraftOf;
using test::IdsIn;
using test::PipeCategory;
using test::RulesIn;
using test::ThreeRules;

namespace {

SeriesPlan Diameters(SeriesForm form, bool withOpenEnds = true, bool withRest = false)
{
    return {u"公称直径"_s, {u"15"_s, u"20"_s, u"25"_s}, form, withOpenEnds, withRest};
}

CStringArray Texts(const std::vector<Rule>& rules)
{
    CStringArray texts;
    for (const Rule& rule : rules)
        texts.append(rule.Text());
    return texts;
}

CStringArray Made(const SeriesPlan& plan)
{
    return Texts(rules::MakeSeries(Rule(), plan));
}

/// What the person is told.
CString ReasonOf(const SeriesPlan& plan)
{
    try {
        rules::MakeSeries(Rule(), plan);
    } catch (const std::invalid_argument& refusal) {
        return CString::fromUtf8(refusal.what());
    }
    return {};
}

} // namespace

TEST(Series, ARuleForEachValueInTheirOrder)
{
    SeriesPlan plan = Diameters(SeriesForm::Values);
    plan.values = {u"DN25"_s, u"DN15"_s};
    EXPECT_EQ(Made(plan), (CStringArray{u"公称直径＝DN25;"_s, u"公称直径＝DN15;"_s}));
}

TEST(Series, RangesThatAreClosedAboveBeginWithoutALowerBound)
{
    using enum SeriesForm;
    EXPECT_EQ(Made(Diameters(UpperClosed)),
              (CStringArray{u"公称直径≤15;"_s, u"15＜公称直径≤20;"_s, u"20＜公称直径≤25;"_s}));
    EXPECT_EQ(Made(Diameters(UpperClosed, false)),
              (CStringArray{u"15＜公称直径≤20;"_s, u"20＜公称直径≤25;"_s}));
    EXPECT_EQ(
        Made(Diameters(UpperClosed, true, true)),
        (CStringArray{u"公称直径≤15;"_s, u"15＜公称直径≤20;"_s, u"20＜公称直径≤25;"_s, u"公称直径＞25;"_s}));
}

TEST(Series, RangesThatAreClosedBelowEndWithoutAnUpperBound)
{
    using enum SeriesForm;
    EXPECT_EQ(Made(Diameters(LowerClosed)),
              (CStringArray{u"15≤公称直径＜20;"_s, u"20≤公称直径＜25;"_s, u"公称直径≥25;"_s}));
    EXPECT_EQ(Made(Diameters(LowerClosed, false)),
              (CStringArray{u"15≤公称直径＜20;"_s, u"20≤公称直径＜25;"_s}));
    EXPECT_EQ(
        Made(Diameters(LowerClosed, true, true)),
        (CStringArray{u"公称直径＜15;"_s, u"15≤公称直径＜20;"_s, u"20≤公称直径＜25;"_s, u"公称直径≥25;"_s}));
}

TEST(Series, EveryNumberFallsIntoOneRangeAlone)
{
    for (const SeriesForm form : {SeriesForm::UpperClosed, SeriesForm::LowerClosed}) {
        const auto category = test::CategoryOf(rules::MakeSeries(Rule(), Diameters(form, true, true)));
        for (const CString& number : {u"0"_s, u"15"_s, u"15.1"_s, u"20"_s, u"24"_s, u"25"_s, u"26"_s}) {
            int holding = 0;
            for (const Rule& rule : category->rules) {
                const rules::CategoryMatcher matcher(test::CategoryOf({rule}), {});
                holding += matcher.Match(std::vector<rules::Cell>{number}) == 0 ? 1 : 0;
            }
            EXPECT_EQ(holding, 1) << number.toStdString();
        }
    }
}

TEST(Series, ConditionTakesThePlaceOfThoseOnItsAttributeAndAllElseStays)
{
    Rule pattern = ThreeRules()[0];
    pattern.conditions = {
        test::Value(u"用途"_s, u"＝"_s, u"热水"_s), test::Range(u"公称直径"_s, u"＞"_s, u"15"_s, {}, {}),
        test::Value(u"材质"_s, u"＝"_s, u"甲"_s), test::Range(u"公称直径"_s, {}, {}, u"≤"_s, u"20"_s)};
    SeriesPlan plan = Diameters(SeriesForm::Values);
    plan.values = {u"50"_s};
    const std::vector<Rule> made = rules::MakeSeries(pattern, plan);
    EXPECT_EQ(Texts(made), (CStringArray{u"用途＝热水;公称直径＝50;材质＝甲;"_s}));
    EXPECT_EQ(made[0].bills[0].record, pattern.bills[0].record);
    EXPECT_EQ(made[0].id, 0);
    EXPECT_EQ(made[0].bills[0].id, 0);
}

TEST(Series, NumbersMayBeWrittenAsTheValueListWritesThem)
{
    SeriesPlan plan = Diameters(SeriesForm::UpperClosed);
    plan.values = {u"DN15"_s, u"DN100"_s};
    EXPECT_EQ(ReasonOf(plan), u"“DN15”不是数字，不能作范围的界限"_s);
    plan.valueList = {u"DN20"_s};
    EXPECT_EQ(Made(plan), (CStringArray{u"公称直径≤DN15;"_s, u"DN15＜公称直径≤DN100;"_s}));
}

TEST(Series, WhatGivesNoSeriesIsRefusedInWords)
{
    const auto reason = [](const CStringArray& values, SeriesForm form = SeriesForm::Values) {
        SeriesPlan plan = Diameters(form, false);
        plan.values = values;
        return ReasonOf(plan);
    };
    EXPECT_EQ(reason({}), u"系列没有值"_s);
    EXPECT_EQ(reason({u"15"_s, u" "_s}), u"系列的第 2 个值是空的"_s);
    EXPECT_EQ(reason({u"15"_s, u"20"_s, u"15.0"_s}), u"系列里有两个“15.0”"_s);
    EXPECT_EQ(reason({u"15"_s, u"大"_s}, SeriesForm::UpperClosed), u"“大”不是数字，不能作范围的界限"_s);
    EXPECT_EQ(reason({u"20"_s, u"15"_s}, SeriesForm::LowerClosed),
              u"“15”不比前一个值大，范围的界限要从小到大"_s);
    EXPECT_EQ(reason({u"20"_s}, SeriesForm::LowerClosed), u"范围至少要两个值"_s);
    EXPECT_EQ(ReasonOf({u" "_s, {u"15"_s}}), u"系列没有写属性"_s);
    EXPECT_EQ(reason({u"9"_s, u"10"_s}, SeriesForm::UpperClosed), CString()) << "by value, not by text";
}

TEST(InsertSeries, TakesThePlaceOfThePatternOrComesBehindIt)
{
    const rules::Draft draft = DraftOf(ThreeRules());
    const SeriesPlan plan = Diameters(SeriesForm::Values);
    const rules::Edit edit = rules::InsertSeries(draft, PipeCategory, 1, plan, true);
    EXPECT_EQ(edit.text, u"系列：公称直径，3 条规则"_s);
    EXPECT_EQ(IdsIn(After(draft, edit)), (std::vector{2, 5, 6, 7, 4, 1}));
    const Rule made = RulesIn(After(draft, edit))[1];
    EXPECT_EQ(made.Text(), u"材质＝乙;公称直径＝15;"_s);
    EXPECT_EQ(made.counters, (rules::RuleCounters{2, 1, 0}));
    EXPECT_EQ(made.conditions[1].id, 2);
    EXPECT_EQ(IdsIn(After(draft, rules::InsertSeries(draft, PipeCategory, 1, plan, false))),
              (std::vector{2, 3, 5, 6, 7, 4, 1}));
    EXPECT_THROW(rules::InsertSeries(draft, PipeCategory, 4, plan, true), std::out_of_range);
    EXPECT_THROW(rules::InsertSeries(draft, PipeCategory, 1, {}, true), std::invalid_argument);
}

TEST(InsertSeries, OfADefaultRuleComesBeforeItAndHasItsItemsAlone)
{
    std::vector<Rule> rules = ThreeRules();
    rules[3].conditions = rules[0].conditions;
    rules[3].bills = {test::Bill(u"09"_s)};
    const rules::Draft draft = DraftOf(rules);
    for (const bool replacesPattern : {true, false}) {
        const auto after =
            RulesIn(After(draft, rules::InsertSeries(draft, PipeCategory, 3, Diameters(SeriesForm::Values),
                                                     replacesPattern)));
        EXPECT_EQ(test::IdsOf(after), (std::vector{2, 3, 4, 5, 6, 7, 1}));
        EXPECT_EQ(after[3].Text(), u"公称直径＝15;"_s);
        EXPECT_EQ(after[3].bills[0].record, rules[3].bills[0].record);
        EXPECT_EQ(after[6], rules[3]);
    }
}
