#include "rules/draft/RuleEdits.h"

#include "rules/draft/DraftTesting.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace Qt::StringLiterals;
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

/// Rules 2 to 7 and the default rule.
Draft SixRules()
{
    std::vector<Rule> rules;
    for (int id = 2; id < 8; ++id)
        rules.push_back(NumberedRule(id, CString::number(id), u"0%1"_s.arg(id)));
    rules.push_back(rules::BareDefault());
    return DraftOf(rules);
}

using Ids = std::vector<int>;

} // namespace

TEST(InsertRules, GivesNewIdsToRulesAndParts)
{
    const Draft draft = DraftOf(ThreeRules());
    Rule rule = NumberedRule(3, u"丁"_s, u"09"_s);
    rule.counters = {40, 50, 60};
    rule.conditions[0].id = 17;
    rule.bills[0].id = 18;
    rule.bills[0].quotas = {test::Quota(u"q1"_s), test::Quota(u"q2"_s)};
    rule.quotas = {test::Quota(u"q3"_s), test::Quota(u"q4"_s)};
    const Edit edit = rules::InsertRules(draft, PipeCategory, 1, {rule, Rule()}, u"增加规则"_s);
    EXPECT_EQ(edit.text, u"增加规则"_s);
    const std::vector<Rule> after = RulesIn(After(draft, edit));
    EXPECT_EQ(test::IdsOf(after), (Ids{2, 5, 6, 3, 4, 1}));
    EXPECT_EQ(after[1].counters, (rules::RuleCounters{1, 1, 2}));
    EXPECT_EQ(after[1].conditions[0].id, 1);
    EXPECT_EQ(after[1].bills[0].id, 1);
    EXPECT_EQ(after[1].bills[0].quotas[0].id, 1);
    EXPECT_EQ(after[1].bills[0].quotas[1].id, 2);
    EXPECT_EQ(after[1].quotas[1].id, 2);
    EXPECT_TRUE(rules::HasSameContent(after[1], rule));
}

TEST(InsertRules, NothingComesBehindTheDefaultRule)
{
    const Draft draft = DraftOf(ThreeRules());
    const auto at = [&](std::size_t position) {
        return IdsIn(After(draft, rules::InsertRules(draft, PipeCategory, position, {Rule()}, {})));
    };
    EXPECT_EQ(at(0), (Ids{5, 2, 3, 4, 1}));
    EXPECT_EQ(at(3), (Ids{2, 3, 4, 5, 1}));
    EXPECT_EQ(at(4), (Ids{2, 3, 4, 5, 1}));
    EXPECT_THROW(at(5), std::out_of_range);
    EXPECT_THROW(rules::InsertRules(draft, u"无"_s, 0, {Rule()}, {}), std::invalid_argument);
    EXPECT_TRUE(rules::InsertRules(draft, PipeCategory, 0, {}, {}).IsEmpty());
    EXPECT_TRUE(rules::InsertRules(draft, PipeCategory, 0, {rules::BareDefault()}, {}).IsEmpty());
}

TEST(InsertRules, ListThatAFileHasOtherwiseIsLeftSo)
{
    std::vector<Rule> rules = ThreeRules();
    std::swap(rules[1], rules[3]); // the default rule in the middle
    const Draft draft = DraftOf(rules);
    EXPECT_EQ(IdsIn(After(draft, rules::InsertRules(draft, PipeCategory, 4, {Rule()}, {}))),
              (Ids{2, 1, 4, 3, 5}));
    EXPECT_EQ(IdsIn(After(draft, rules::DeleteRules(draft, PipeCategory, {0, 1, 2}))), (Ids{1, 3}));
    EXPECT_EQ(IdsIn(After(draft, rules::MoveRules(draft, PipeCategory, {0, 1}, 4))), (Ids{1, 4, 3, 2}));
}

TEST(ChangeRule, PartsKeepTheirIdsAndNewOnesGetNewIds)
{
    std::vector<Rule> rules = ThreeRules();
    rules[1].counters = {4, 6, 8};
    rules[1].bills[0].quotas = {test::Quota(u"q1"_s)};
    rules[1].bills[0].quotas[0].id = 3;
    const Draft draft = DraftOf(rules);
    Rule changed = rules[1];
    changed.id = 77;
    changed.isDefault = true;
    changed.counters = {};
    changed.conditions.insert(changed.conditions.begin(), test::Value(u"壁厚"_s, u"＝"_s, u"3"_s));
    changed.bills[0].quotas.push_back(test::Quota(u"q2"_s));
    changed.bills[0].quotas.back().id = 0;
    changed.bills.push_back(changed.bills[0]); // a copy of the whole item
    const Edit edit = rules::ChangeRule(draft, PipeCategory, 1, changed, u"改"_s);
    const Rule after = RulesIn(After(draft, edit))[1];
    EXPECT_EQ(after.id, 3);
    EXPECT_FALSE(after.isDefault);
    EXPECT_EQ(after.counters, (rules::RuleCounters{5, 7, 8}));
    EXPECT_EQ(after.conditions[0].id, 5);
    EXPECT_EQ(after.conditions[1].id, 1);
    EXPECT_EQ(after.bills[0].id, 1);
    EXPECT_EQ(after.bills[0].quotas[0].id, 3);
    EXPECT_EQ(after.bills[0].quotas[1].id, 4);
    EXPECT_EQ(after.bills[1].id, 7);
    EXPECT_EQ(after.bills[1].quotas[0].id, 1) << "an item that is new numbers its own from 1";
    EXPECT_EQ(after.bills[1].quotas[1].id, 2);
    EXPECT_EQ(edit.splices.size(), 1U);
}

TEST(ChangeRule, IdsThatAFileHasTwiceOrNotAtAllStay)
{
    std::vector<Rule> rules = ThreeRules();
    rules[0].conditions.push_back(test::Value(u"壁厚"_s, u"＝"_s, u"3"_s)); // its id is 0
    rules[0].bills.push_back(test::Bill(u"05"_s));                          // its id is 1, too
    const Draft draft = DraftOf(rules);
    EXPECT_TRUE(rules::ChangeRule(draft, PipeCategory, 0, rules[0], {}).IsEmpty());
    Rule changed = rules[0];
    changed.conditions[0].value = u"丁"_s;
    EXPECT_EQ(RulesIn(After(draft, rules::ChangeRule(draft, PipeCategory, 0, changed, {})))[0], changed);
    changed.conditions[1].value = u"4"_s;
    const Rule after = RulesIn(After(draft, rules::ChangeRule(draft, PipeCategory, 0, changed, {})))[0];
    EXPECT_EQ(after.conditions[1].id, 2) << "a changed part without an id gets one";
    EXPECT_EQ(after.counters.condition, 2);
}

TEST(ChangeRule, DefaultRuleStaysOne)
{
    const Draft draft = DraftOf(ThreeRules());
    Rule changed;
    changed.bills = {test::Bill(u"09"_s)};
    const Rule after = RulesIn(After(draft, rules::ChangeRule(draft, PipeCategory, 3, changed, {})))[3];
    EXPECT_TRUE(after.isDefault);
    EXPECT_EQ(after.id, 1);
    EXPECT_EQ(after.bills.size(), 1U);
    EXPECT_THROW(rules::ChangeRule(draft, PipeCategory, 4, changed, {}), std::out_of_range);
}

TEST(DeleteRules, GoInAnyOrderAndDefaultRulesStay)
{
    const Draft draft = SixRules();
    const Edit edit = rules::DeleteRules(draft, PipeCategory, {6, 4, 0, 3});
    EXPECT_EQ(edit.text, u"删除 3 条规则"_s);
    EXPECT_EQ(edit.splices.size(), 2U) << "neighbours together";
    EXPECT_EQ(IdsIn(After(draft, edit)), (Ids{3, 4, 7, 1}));
    EXPECT_EQ(rules::DeleteRules(draft, PipeCategory, {1}).text, u"删除规则"_s);
    EXPECT_TRUE(rules::DeleteRules(draft, PipeCategory, {6}).IsEmpty());
    EXPECT_TRUE(rules::DeleteRules(draft, PipeCategory, {}).IsEmpty());
    EXPECT_THROW(rules::DeleteRules(draft, PipeCategory, {0, 7}), std::out_of_range);
}

TEST(MoveRules, ComeToStandBeforeTheTargetInTheOrderOfTheList)
{
    const Draft draft = SixRules();
    const auto move = [&](const std::vector<std::size_t>& positions, std::size_t target) {
        return IdsIn(After(draft, rules::MoveRules(draft, PipeCategory, positions, target)));
    };
    EXPECT_EQ(move({4, 1}, 0), (Ids{3, 6, 2, 4, 5, 7, 1}));
    EXPECT_EQ(move({0, 2}, 4), (Ids{3, 5, 2, 4, 6, 7, 1}));
    EXPECT_EQ(move({1, 3}, 3), (Ids{2, 4, 3, 5, 6, 7, 1})) << "the target is one of them";
    EXPECT_EQ(move({0}, 7), (Ids{3, 4, 5, 6, 7, 2, 1})) << "not behind the default rule";
    EXPECT_EQ(move({0}, 6), (Ids{3, 4, 5, 6, 7, 2, 1}));
    EXPECT_EQ(move({6, 5}, 0), (Ids{7, 2, 3, 4, 5, 6, 1})) << "the default rule stays";
    EXPECT_TRUE(rules::MoveRules(draft, PipeCategory, {2, 3}, 2).IsEmpty());
    EXPECT_TRUE(rules::MoveRules(draft, PipeCategory, {2, 3}, 4).IsEmpty());
    EXPECT_THROW(move({0}, 8), std::out_of_range);
    const Edit edit = rules::MoveRules(draft, PipeCategory, {0}, 6);
    EXPECT_EQ(edit.text, u"移动规则"_s);
    EXPECT_EQ(edit.splices.size(), 2U) << "those that stay are not touched";
}

TEST(ShiftRules, RunsOfNeighboursGoTogetherAndStopAtTheEnds)
{
    const Draft draft = SixRules();
    const auto shift = [&](const std::vector<std::size_t>& positions, bool down) {
        return IdsIn(After(draft, rules::ShiftRules(draft, PipeCategory, positions, down)));
    };
    EXPECT_EQ(shift({1, 2, 4}, false), (Ids{3, 4, 2, 6, 5, 7, 1}));
    EXPECT_EQ(shift({1, 2, 4}, true), (Ids{2, 5, 3, 4, 7, 6, 1}));
    EXPECT_EQ(shift({0, 1, 3}, false), (Ids{2, 3, 5, 4, 6, 7, 1})) << "what stands at the start stays";
    EXPECT_EQ(shift({3, 5, 6}, true), (Ids{2, 3, 4, 6, 5, 7, 1})) << "nothing goes behind the default rule";
    EXPECT_TRUE(rules::ShiftRules(draft, PipeCategory, {4, 5}, true).IsEmpty());
    EXPECT_TRUE(rules::ShiftRules(draft, PipeCategory, {6}, false).IsEmpty());
    EXPECT_EQ(rules::ShiftRules(draft, PipeCategory, {1, 2, 4}, false).text, u"上移 3 条规则"_s);
    EXPECT_EQ(rules::ShiftRules(draft, PipeCategory, {0, 4}, true).text, u"下移 2 条规则"_s);
}

TEST(Towards, LeadsToWhatWasMadeElsewhereAndKeepsItsIds)
{
    Draft draft = DraftOf(ThreeRules());
    std::vector<Rule> wanted = ThreeRules();
    std::swap(wanted[0], wanted[2]);
    wanted[1].bills[0].record.strFormula = u"L"_s;
    wanted.insert(wanted.begin(), NumberedRule(40, u"丁"_s, u"09"_s));
    const auto with =
        test::ConfigurationOf({test::SmallOf(u"给水管"_s, wanted), test::SmallOf(u"别处的"_s, ThreeRules())});
    const Edit edit = rules::Towards(draft, with, u"合并"_s);
    EXPECT_EQ(edit.text, u"合并"_s);
    draft.Apply(edit);
    EXPECT_EQ(RulesIn(draft), wanted);
    EXPECT_EQ(draft.FreshId(PipeCategory), 41);
    EXPECT_TRUE(rules::Towards(draft, with, {}).IsEmpty());
    draft.Revert(edit);
    EXPECT_EQ(RulesIn(draft), ThreeRules());
}

TEST(Towards, RulesOfCategoriesThatAreMissingGoOnlyWhenItIsAllOfAFile)
{
    const Draft draft = DraftOf(ThreeRules());
    const auto without = test::ConfigurationOf({test::SmallOf(u"排水管"_s, ThreeRules())});
    EXPECT_EQ(RulesIn(After(draft, rules::Towards(draft, without, {}))), ThreeRules());
    const Draft after = After(draft, rules::Towards(draft, without, {}, true));
    EXPECT_EQ(RulesIn(after), std::vector{rules::BareDefault()});
    EXPECT_EQ(RulesIn(after, DrainCategory), ThreeRules());
}

TEST(Towards, RulesOfOneIdThatAFileHasTwiceAreToldApart)
{
    std::vector<Rule> rules{NumberedRule(2, u"甲"_s, u"01"_s), NumberedRule(2, u"甲"_s, u"01"_s),
                            NumberedRule(2, u"乙"_s, u"01"_s), rules::BareDefault()};
    const Draft draft = DraftOf(rules);
    const std::vector<Rule> wanted{rules[2], rules[0], rules[3]};
    EXPECT_EQ(RulesIn(After(draft, rules::Towards(draft, test::Pipes(wanted), {}))), wanted);
}
