// Conditions and items of several rules at once, and copies into another category.
#include "rules/draft/RuleEdits.h"

#include "rules/draft/DraftTesting.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace Qt::StringLiterals;
using rules::Condition;
using rules::Draft;
using rules::Edit;
using rules::Rule;
using test::After;
using test::DraftOf;
using test::DrainCategory;
using test::IdsIn;
using test::NumberedRule;
using test::PipeCategory;
using test::RulesIn;
using test::ThreeRules;

namespace {

CStringArray Texts(const Draft& draft, const CString& category = PipeCategory)
{
    CStringArray texts;
    for (const Rule& rule : RulesIn(draft, category))
        texts.append(rule.Text());
    return texts;
}

/// Three rules with the quota items q1 below the bill item and q2 of the rule itself.
std::vector<Rule> WithQuotas()
{
    std::vector<Rule> rules = ThreeRules();
    for (Rule& rule : rules) {
        if (rule.isDefault) continue;
        rule.bills[0].quotas = {test::Quota(u"q1"_s, u"a"_s)};
        rule.quotas = {test::Quota(u"q2"_s, u"b"_s), test::Quota(u"q1"_s, u"c"_s)};
        rule.quotas[1].id = 2;
        rule.counters.quota = 2;
    }
    return rules;
}

} // namespace

TEST(SetCondition, TakesThePlaceOfTheFirstOnItsAttributeOrComesAtTheEnd)
{
    std::vector<Rule> rules = ThreeRules();
    rules[0].conditions.insert(rules[0].conditions.begin(), test::Value(u"用途"_s, u"＝"_s, u"热水"_s));
    rules[0].conditions[0].id = 2;
    rules[0].counters.condition = 2;
    rules[1].conditions[0].attribute = u"壁厚"_s;
    const Draft draft = DraftOf(rules);
    Condition condition = test::Value(u"材质"_s, u"＝"_s, u"镀锌钢管"_s);
    condition.id = 33;
    const Edit edit = rules::SetCondition(draft, PipeCategory, {0, 1, 3}, condition);
    EXPECT_EQ(edit.text, u"材质改为 镀锌钢管"_s);
    const Draft after = After(draft, edit);
    EXPECT_EQ(Texts(after), (CStringArray{u"用途＝热水;材质＝镀锌钢管;"_s, u"壁厚＝乙;材质＝镀锌钢管;"_s,
                                          u"材质＝丙;"_s, u"其它"_s}));
    EXPECT_EQ(RulesIn(after)[0].conditions[1].id, 1) << "that of the condition whose place it took";
    EXPECT_EQ(RulesIn(after)[1].conditions[1].id, 2);
    EXPECT_EQ(RulesIn(after)[1].counters.condition, 2);
    EXPECT_EQ(RulesIn(after)[3], rules[3]) << "a default rule is left out";
    EXPECT_TRUE(rules::SetCondition(after, PipeCategory, {0, 1}, condition).IsEmpty());
}

TEST(SetCondition, IsToldAsItIsReadInTheList)
{
    const Draft draft = DraftOf(ThreeRules());
    const auto text = [&](const Condition& condition) {
        return rules::SetCondition(draft, PipeCategory, {0}, condition).text;
    };
    EXPECT_EQ(text(test::Value(u"材质"_s, u"≠"_s, u"铜管"_s)), u"材质改为 ≠铜管"_s);
    EXPECT_EQ(text(test::Range(u"公称直径"_s, u"＞"_s, u"50"_s, u"≤"_s, u"65"_s)),
              u"公称直径改为 50＜公称直径≤65"_s);
}

TEST(RemoveConditions, AllOnTheAttributeGo)
{
    std::vector<Rule> rules = ThreeRules();
    rules[0].conditions.push_back(test::Value(u"壁厚"_s, u"＝"_s, u"3"_s));
    rules[0].conditions.push_back(test::Value(u" 材质 "_s, u"≠"_s, u"铜管"_s));
    const Draft draft = DraftOf(rules);
    const Edit edit = rules::RemoveConditions(draft, PipeCategory, {0, 1, 3}, u"材质"_s);
    EXPECT_EQ(edit.text, u"去掉材质的条件"_s);
    EXPECT_EQ(Texts(After(draft, edit)), (CStringArray{u"壁厚＝3;"_s, u""_s, u"材质＝丙;"_s, u"其它"_s}));
    EXPECT_TRUE(rules::RemoveConditions(draft, PipeCategory, {0, 1}, u"长度"_s).IsEmpty());
}

TEST(ReplaceBill, FormulaAndAnnexStayUnlessWholly)
{
    std::vector<Rule> rules = WithQuotas();
    rules[1].bills[0].record.strQdId = u"01"_s;
    for (Rule& rule : rules)
        if (!rule.bills.empty()) rule.bills[0].record.strFormula = u"L"_s;
    Draft draft = DraftOf(rules);
    draft.Apply(rules::InsertRules(draft, DrainCategory, 0, {rules[0]}, {}));
    QdStruct record = test::Bill(u"09"_s, u"M"_s).record;
    record.strAnnex = u"是"_s;
    const rules::RulePlaces places{{PipeCategory, {0, 1, 2}}, {DrainCategory, {0}}};
    const Edit edit = rules::ReplaceBill(draft, places, u"01"_s, record, false);
    EXPECT_EQ(edit.text, u"清单 01 换为 09"_s);
    const Draft after = After(draft, edit);
    for (const Rule& rule : {RulesIn(after)[0], RulesIn(after)[1], RulesIn(after, DrainCategory)[0]}) {
        EXPECT_EQ(rule.bills[0].record.strName, u"名称09"_s);
        EXPECT_EQ(rule.bills[0].record.strFormula, u"L"_s);
        EXPECT_EQ(rule.bills[0].record.strAnnex, CString());
        EXPECT_EQ(rule.bills[0].id, 1);
        EXPECT_EQ(rule.bills[0].quotas.size(), 1U);
    }
    EXPECT_EQ(RulesIn(after)[2], rules[2]) << "another item";
    const Draft wholly = After(draft, rules::ReplaceBill(draft, places, u"01"_s, record, true));
    EXPECT_EQ(RulesIn(wholly)[0].bills[0].record, record);
    EXPECT_EQ(rules::ReplaceBill(draft, places, u"09"_s, record, true).text, u"修改清单 09"_s);
}

TEST(ReplaceQuota, ThoseBelowBillItemsAndThoseOfTheRule)
{
    const Draft draft = DraftOf(WithQuotas());
    const DeStruct record = test::Quota(u"q9"_s, u"z"_s).record;
    const Edit edit = rules::ReplaceQuota(draft, {{PipeCategory, {0, 2}}}, u"q1"_s, record, false);
    EXPECT_EQ(edit.text, u"定额 q1 换为 q9"_s);
    const std::vector<Rule> after = RulesIn(After(draft, edit));
    for (const std::size_t i : {0, 2}) {
        EXPECT_EQ(after[i].bills[0].quotas[0].record.strDeId, u"q9"_s);
        EXPECT_EQ(after[i].bills[0].quotas[0].record.strFormula, u"a"_s);
        EXPECT_EQ(after[i].quotas[0].record.strDeId, u"q2"_s);
        EXPECT_EQ(after[i].quotas[1].record.strDeId, u"q9"_s);
        EXPECT_EQ(after[i].quotas[1].record.strFormula, u"c"_s);
    }
    EXPECT_EQ(after[1], WithQuotas()[1]);
}

TEST(SetFormula, OfBillAndQuotaItemsOfThatNumber)
{
    const Draft draft = DraftOf(WithQuotas());
    const Edit edit = rules::SetFormula(draft, {{PipeCategory, {0, 1}}}, u"q1"_s, u"L×2"_s);
    EXPECT_EQ(edit.text, u"q1 的计算式改为 L×2"_s);
    const std::vector<Rule> after = RulesIn(After(draft, edit));
    EXPECT_EQ(after[1].bills[0].quotas[0].record.strFormula, u"L×2"_s);
    EXPECT_EQ(after[1].quotas[1].record.strFormula, u"L×2"_s);
    EXPECT_EQ(after[1].quotas[0].record.strFormula, u"b"_s);
    EXPECT_EQ(after[2], WithQuotas()[2]);
    const Edit bill = rules::SetFormula(draft, {{PipeCategory, {0, 1, 2}}}, u"02"_s, u"M"_s);
    EXPECT_EQ(RulesIn(After(draft, bill))[1].bills[0].record.strFormula, u"M"_s);
    EXPECT_EQ(bill.splices.size(), 1U);
}

TEST(PartEdits, ScatteredRulesAreOneEditThatTouchesNoOthers)
{
    std::vector<Rule> rules;
    for (int id = 2; id < 12; ++id)
        rules.push_back(NumberedRule(id, u"甲"_s, u"01"_s));
    const Draft draft = DraftOf(rules);
    const Edit edit =
        rules::SetCondition(draft, PipeCategory, {1, 2, 8}, test::Value(u"材质"_s, u"＝"_s, u"乙"_s));
    ASSERT_EQ(edit.splices.size(), 2U);
    EXPECT_EQ(edit.splices[0].removed.size(), 2U);
    EXPECT_EQ(edit.splices[1].removed.size(), 1U);
    EXPECT_THROW(rules::RemoveConditions(draft, PipeCategory, {10}, u"材质"_s), std::out_of_range);
    EXPECT_THROW(rules::SetFormula(draft, {{u"无"_s, {}}}, u"01"_s, {}), std::invalid_argument);
}

TEST(CopyRules, IntoAnotherCategoryWithNewIds)
{
    const Draft draft = DraftOf(WithQuotas());
    std::vector<rules::Misfit> misfits;
    const Edit edit = rules::CopyRules(draft, PipeCategory, {2, 0}, DrainCategory, 0, {}, misfits);
    EXPECT_EQ(edit.text, u"复制 2 条规则到 排水管"_s);
    EXPECT_TRUE(misfits.empty());
    const Draft after = After(draft, edit);
    EXPECT_EQ(Texts(after, DrainCategory), (CStringArray{u"材质＝甲;"_s, u"材质＝丙;"_s, u"其它"_s}));
    EXPECT_EQ(IdsIn(after, DrainCategory), (std::vector{2, 3, 1}));
    EXPECT_TRUE(rules::HasSameContent(RulesIn(after, DrainCategory)[1], WithQuotas()[2]));
    EXPECT_EQ(RulesIn(after), WithQuotas());
}

TEST(CopyRules, WithinACategoryAtAPlaceInFrontOfTheDefaultRule)
{
    const Draft draft = DraftOf(ThreeRules());
    std::vector<rules::Misfit> misfits;
    const auto copy = [&](std::size_t position) {
        return rules::CopyRules(draft, PipeCategory, {1}, PipeCategory, position, {{.name = u"别的"_s}},
                                misfits);
    };
    EXPECT_EQ(copy(0).text, u"复制规则"_s);
    EXPECT_EQ(IdsIn(After(draft, copy(2))), (std::vector{2, 3, 5, 4, 1}));
    EXPECT_EQ(IdsIn(After(draft, copy(4))), (std::vector{2, 3, 4, 5, 1}));
    EXPECT_THROW(copy(5), std::out_of_range);
    EXPECT_TRUE(misfits.empty()) << "what its own category has is no misfit";
}

TEST(CopyRules, WhatTheTargetDoesNotKnowIsCopiedAndTold)
{
    std::vector<Rule> rules = ThreeRules();
    rules[1].conditions = {test::Range(u"公称直径"_s, u"＞"_s, u"50"_s, u"≤"_s, u"65"_s),
                           test::Range(u"材质"_s, {}, {}, u"≤"_s, u"65"_s),
                           test::Value(u"具体构件"_s, u"＝"_s, u"立管"_s)};
    rules[2].conditions = {test::Value(u"壁厚"_s, u"＝"_s, u"3"_s),
                           test::Value(u"公称直径"_s, u"＝"_s, u"６５.0"_s),
                           test::Value(u"公称直径"_s, u"＝"_s, u"66"_s)};
    const Draft draft = DraftOf(rules);
    const rules::CategoryFacts facts{
        {.name = u"材质"_s, .allowsRange = false},
        {.name = u"公称直径"_s, .valueList = {u"50"_s, u"65"_s}},
    };
    std::vector<rules::Misfit> misfits;
    const Edit edit = rules::CopyRules(draft, PipeCategory, {0, 1, 2}, DrainCategory, 0, facts, misfits);
    EXPECT_EQ(RulesIn(After(draft, edit), DrainCategory).size(), 4U);
    ASSERT_EQ(misfits.size(), 3U);
    EXPECT_EQ(misfits[0].rule, 1U);
    EXPECT_EQ(misfits[0].text, u"“材质”只能取值，不能写范围：材质≤65"_s);
    EXPECT_EQ(misfits[1].rule, 2U);
    EXPECT_EQ(misfits[1].text, u"排水管没有属性“壁厚”"_s);
    EXPECT_EQ(misfits[2].text, u"“公称直径”的值列表里没有“66”"_s);
}

TEST(CopyRules, DefaultRuleGivesItsItemsWhereTheTargetHasNoneYet)
{
    std::vector<Rule> rules = ThreeRules();
    rules[3].bills = {test::Bill(u"09"_s)};
    rules[3].bills[0].id = 7;
    Draft draft = DraftOf(rules);
    std::vector<rules::Misfit> misfits;
    const auto copy = [&] {
        return rules::CopyRules(draft, PipeCategory, {3, 0}, DrainCategory, 1, {}, misfits);
    };
    EXPECT_EQ(copy().text, u"复制 2 条规则到 排水管"_s);
    draft.Apply(copy());
    EXPECT_TRUE(misfits.empty());
    EXPECT_EQ(IdsIn(draft, DrainCategory), (std::vector{2, 1}));
    const Rule taken = RulesIn(draft, DrainCategory)[1];
    EXPECT_TRUE(taken.isDefault);
    EXPECT_EQ(taken.bills[0].record, rules[3].bills[0].record);
    EXPECT_EQ(taken.bills[0].id, 1);
    draft.Apply(copy());
    EXPECT_EQ(IdsIn(draft, DrainCategory), (std::vector{2, 3, 1}));
    ASSERT_EQ(misfits.size(), 1U);
    EXPECT_EQ(misfits[0].rule, 1U);
    EXPECT_EQ(misfits[0].text, u"排水管已有默认规则，没有再复制"_s);
    EXPECT_TRUE(rules::CopyRules(draft, DrainCategory, {2}, PipeCategory, 0, {}, misfits).IsEmpty());
    EXPECT_EQ(misfits.size(), 2U);
    EXPECT_TRUE(
        rules::CopyRules(DraftOf(ThreeRules()), PipeCategory, {3}, DrainCategory, 0, {}, misfits).IsEmpty());
    EXPECT_EQ(misfits.size(), 2U) << "nothing is lost with a default rule without items";
}
