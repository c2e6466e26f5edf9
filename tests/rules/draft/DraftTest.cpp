#include "rules/draft/Draft.h"

#include "rules/draft/DraftTesting.h"
#include "rules/draft/RuleEdits.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>

using namespace Qt::StringLiterals;
using rules::Draft;
using rules::Edit;
using rules::Rule;
using test::DraftOf;
using test::DrainCategory;
using test::IdsIn;
using test::NumberedRule;
using test::PipeCategory;
using test::RulesIn;
using test::ThreeRules;

namespace {

/// The names of the small categories, in order.
CStringArray Names(const Draft& draft)
{
    CStringArray names;
    for (const rules::Specialty& specialty : draft.Specialties())
        for (const rules::BigCategory& big : specialty.bigCategories)
            for (const rules::SmallCategoryPtr& small : big.smallCategories)
                names.append(small->name);
    return names;
}

/// One rule out, another one in.
Edit Exchange(const CString& category, std::size_t position, const Rule& removed, const Rule& inserted)
{
    return {u"换"_s, {{category, position, {removed}, {inserted}}}};
}

} // namespace

TEST(Draft, WithoutAFileHasNothing)
{
    const Draft draft;
    EXPECT_TRUE(draft.Specialties().empty());
    EXPECT_EQ(draft.Find(PipeCategory), nullptr);
    EXPECT_FALSE(draft.IsChanged());
    EXPECT_TRUE(draft.Wanted().Specialties().empty());
}

TEST(Draft, OfferedCategoriesStandInTheHostsOrderAndThoseOfTheFileAloneBehindThem)
{
    const auto file = test::Shared(rules::Configuration(
        {{1,
          u"给排水"_s,
          {{12, u"阀门"_s, {test::SmallOf(u"闸阀"_s, ThreeRules())}},
           {11,
            u"管道"_s,
            {test::SmallOf(u"旧管"_s, ThreeRules()), test::SmallOf(u"排水管"_s, ThreeRules())}}}}}));
    const Draft draft(file, test::Offered());
    EXPECT_EQ(Names(draft), (CStringArray{u"给水管"_s, u"排水管"_s, u"旧管"_s, u"闸阀"_s}));
    EXPECT_TRUE(draft.IsOffered(DrainCategory));
    EXPECT_FALSE(draft.IsOffered(u"给排水\\管道\\旧管"_s));
    EXPECT_EQ(RulesIn(draft, DrainCategory), ThreeRules());
    EXPECT_EQ(RulesIn(draft, PipeCategory), std::vector{rules::BareDefault()});
}

TEST(Draft, OfferedCategoryComesIntoTheFileOnlyWhenItIsEdited)
{
    Draft draft = DraftOf(ThreeRules());
    EXPECT_FALSE(draft.IsChanged());
    EXPECT_EQ(draft.Wanted().Find(DrainCategory), nullptr);
    draft.Apply(rules::InsertRules(draft, DrainCategory, 0, {NumberedRule(0, u"甲"_s, u"01"_s)}, {}));
    EXPECT_TRUE(draft.IsChanged(DrainCategory));
    EXPECT_FALSE(draft.IsChanged(PipeCategory));
    EXPECT_EQ(test::RulesIn(draft.Wanted(), DrainCategory), RulesIn(draft, DrainCategory));
    EXPECT_EQ(draft.Wanted().Find(PipeCategory), draft.File()->Find(PipeCategory));
}

TEST(Draft, EditThatIsTakenBackLeavesNothingChanged)
{
    Draft draft = DraftOf(ThreeRules());
    const rules::SmallCategoryPtr before = draft.Find(PipeCategory);
    const Edit edit = rules::DeleteRules(draft, PipeCategory, {0, 2});
    draft.Apply(edit);
    EXPECT_EQ(IdsIn(draft), (std::vector{3, 1}));
    EXPECT_TRUE(draft.IsChanged());
    EXPECT_EQ(before->rules, ThreeRules()) << "a state that somebody holds never changes";
    draft.Revert(edit);
    EXPECT_EQ(draft.Find(PipeCategory), before);
    EXPECT_FALSE(draft.IsChanged());
    draft.Apply(edit);
    draft.Apply(edit.Inverse());
    EXPECT_FALSE(draft.IsChanged());
}

TEST(Draft, EditThatComesToWhatTheFileHasLeavesNothingChanged)
{
    Draft draft = DraftOf(ThreeRules());
    draft.Apply(rules::MoveRules(draft, PipeCategory, {0}, 2));
    draft.Apply(rules::MoveRules(draft, PipeCategory, {1}, 0));
    EXPECT_FALSE(draft.IsChanged());
}

TEST(Draft, EditOfOtherRulesIsRefusedWithNothingDone)
{
    Draft draft = DraftOf(ThreeRules());
    const std::vector<Rule> rules = ThreeRules();
    Rule other = rules[1];
    other.counters.quota = 1;
    Edit edit = rules::DeleteRules(draft, PipeCategory, {0});
    edit.splices.push_back({PipeCategory, 0, {other}, {}});
    EXPECT_THROW(draft.Apply(edit), std::logic_error);
    EXPECT_EQ(RulesIn(draft), ThreeRules());
    EXPECT_THROW(draft.Apply(Exchange(PipeCategory, 4, rules[0], rules[0])), std::logic_error);
    EXPECT_THROW(draft.Apply(Exchange(u"给排水\\管道\\无"_s, 0, rules[0], rules[0])), std::logic_error);
    EXPECT_THROW(draft.Revert(Exchange(PipeCategory, 0, rules[1], rules[1])), std::logic_error);
    EXPECT_FALSE(draft.IsChanged());
}

TEST(Draft, FreshIdsAreNeverGivenTwice)
{
    Draft draft = DraftOf(ThreeRules());
    EXPECT_EQ(draft.FreshId(PipeCategory), 5);
    EXPECT_EQ(draft.FreshId(DrainCategory), 2) << "default rules have 1";
    const Edit edit = rules::InsertRules(draft, PipeCategory, 0, {Rule(), Rule()}, {});
    draft.Apply(edit);
    draft.Revert(edit);
    EXPECT_EQ(draft.FreshIds(PipeCategory, 2), (std::vector{7, 8}));
    draft.Apply(rules::DeleteRules(draft, PipeCategory, {2}));
    EXPECT_EQ(draft.FreshId(PipeCategory), 7);
}

TEST(Draft, FreshIdIsTheLowestFreeOneWhereTheHighestThereIsHasBeenGiven)
{
    std::vector<Rule> rules = ThreeRules();
    rules[0].id = std::numeric_limits<int>::max();
    EXPECT_EQ(DraftOf(rules).FreshIds(PipeCategory, 3), (std::vector{2, 5, 6}));
}

TEST(Draft, AfterASaveNothingIsChanged)
{
    Draft draft = DraftOf(ThreeRules());
    const Edit edit = rules::DeleteRules(draft, PipeCategory, {0});
    draft.Apply(edit);
    const rules::SmallCategoryPtr state = draft.Find(PipeCategory);
    draft.Rebase(test::Shared(draft.Wanted()));
    EXPECT_FALSE(draft.IsChanged());
    EXPECT_EQ(draft.Find(PipeCategory), state);
    draft.Revert(edit);
    EXPECT_TRUE(draft.IsChanged()) << "the file has it otherwise now";
    EXPECT_EQ(RulesIn(draft), ThreeRules());
}

TEST(Draft, WhatSomebodyElseHasWrittenComesInWhereNothingWasChanged)
{
    const auto with = [](const std::vector<Rule>& pipes, const std::vector<Rule>& drains) {
        return test::Shared(
            test::ConfigurationOf({test::SmallOf(u"给水管"_s, pipes), test::SmallOf(u"排水管"_s, drains),
                                   test::SmallOf(u"旧管"_s, pipes)}));
    };
    Draft draft(with(ThreeRules(), ThreeRules()), test::Offered());
    draft.Apply(rules::DeleteRules(draft, PipeCategory, {0}));
    std::vector<Rule> theirs = ThreeRules();
    theirs[0].id = 9;
    draft.Rebase(test::Shared(
        test::ConfigurationOf({test::SmallOf(u"给水管"_s, theirs), test::SmallOf(u"排水管"_s, theirs),
                               test::SmallOf(u"新管"_s, theirs)})));
    EXPECT_EQ(IdsIn(draft), (std::vector{3, 4, 1})) << "changed here: stays";
    EXPECT_TRUE(draft.IsChanged(PipeCategory));
    EXPECT_EQ(RulesIn(draft, DrainCategory), theirs);
    EXPECT_FALSE(draft.IsChanged(DrainCategory));
    EXPECT_EQ(RulesIn(draft, u"给排水\\管道\\新管"_s), theirs);
    EXPECT_EQ(RulesIn(draft, u"给排水\\管道\\旧管"_s), std::vector{rules::BareDefault()})
        << "the file has it no more";
    EXPECT_EQ(draft.Wanted().Find(u"给排水\\管道\\旧管"_s), nullptr);
    EXPECT_EQ(draft.FreshId(PipeCategory), 10);
}

TEST(Draft, ManySplicesOfOneListAreDoneInTheirOrder)
{
    std::vector<Rule> rules;
    for (int id = 2; id < 102; ++id)
        rules.push_back(NumberedRule(id, CString::number(id), u"01"_s));
    rules.push_back(rules::BareDefault());
    Draft draft = DraftOf(rules);
    Edit edit;
    for (std::size_t i = 0; i < 50; ++i) // every second one goes, from the start
        edit.splices.push_back({PipeCategory, i, {rules[2 * i]}, {}});
    for (std::size_t i = 50; i-- > 0;) // and comes back, from the end
        edit.splices.push_back({PipeCategory, i, {}, {rules[2 * i]}});
    draft.Apply(edit);
    EXPECT_EQ(RulesIn(draft), rules);
    edit.splices.resize(50);
    draft.Apply(edit);
    EXPECT_EQ(RulesIn(draft).size(), 51U);
    EXPECT_EQ(IdsIn(draft)[49], 101);
    draft.Revert(edit);
    EXPECT_EQ(RulesIn(draft), rules);
}
