// Three states of one configuration brought together, in examples.
#include "rules/merge/Merge.h"

#include "rules/MergeTesting.h"

#include <gtest/gtest.h>

#include <limits>

using namespace Qt::StringLiterals;
using rules::ConflictKind;
using rules::Merge;
using rules::Rule;
using rules::Side;
using test::DefaultRule;
using test::FourRules;
using test::IdsOf;
using test::Merged;
using test::PipeRule;
using test::Pipes;
using test::Told;

namespace {

Rule WithMaterial(Rule rule, const CString& material)
{
    rule.conditions[0].value = material;
    return rule;
}

} // namespace

TEST(MergeRules, EditsOfDifferentRulesAreAllTaken)
{
    std::vector<Rule> mine = FourRules;
    mine[0] = WithMaterial(mine[0], u"无缝钢管"_s);
    const std::vector<Rule> theirs{FourRules[0], FourRules[2], PipeRule(5, u"铸铁管"_s, u"09"_s),
                                   FourRules[3]};
    const std::vector<Rule> merged = Merged(FourRules, mine, theirs);
    EXPECT_EQ(Told(merged), Told({mine[0], FourRules[2], theirs[2], FourRules[3]}));
    EXPECT_EQ(IdsOf(merged), (std::vector{2, 4, 5, 1}));
}

TEST(MergeRules, RuleThatBothChangedAlikeIsTakenOnce)
{
    std::vector<Rule> mine = FourRules;
    mine[1] = WithMaterial(mine[1], u"紫铜管"_s);
    EXPECT_EQ(Told(Merged(FourRules, mine, mine)), Told(mine));
}

TEST(MergeRules, RuleThatBothAddedAlikeIsTakenOnce)
{
    const std::vector<Rule> mine{FourRules[0], FourRules[1], FourRules[2], PipeRule(5, u"铸铁管"_s, u"09"_s),
                                 FourRules[3]};
    const std::vector<Rule> theirs{FourRules[0], PipeRule(8, u"铸铁管"_s, u"09"_s), FourRules[1],
                                   FourRules[2], FourRules[3]};
    const std::vector<Rule> merged = Merged(FourRules, mine, theirs);
    EXPECT_EQ(merged.size(), 5U);
    EXPECT_EQ(IdsOf(merged), (std::vector{2, 3, 4, 5, 1})) << "the place and the id are those of mine";
}

TEST(MergeRules, RulesThatGotOneIdGetDifferentOnes)
{
    const std::vector<Rule> mine{FourRules[0], PipeRule(5, u"铸铁管"_s, u"09"_s), FourRules[1], FourRules[2],
                                 FourRules[3]};
    const std::vector<Rule> theirs{FourRules[0], PipeRule(5, u"塑料管"_s, u"08"_s), FourRules[1],
                                   FourRules[2], FourRules[3]};
    const std::vector<Rule> merged = Merged(FourRules, mine, theirs);
    EXPECT_EQ(Told(merged),
              Told({FourRules[0], mine[1], theirs[1], FourRules[1], FourRules[2], FourRules[3]}));
    EXPECT_EQ(IdsOf(merged), (std::vector{2, 5, 6, 3, 4, 1}));
}

TEST(MergeRules, FreshIdIsFoundWhereTheLargestOneIsTaken)
{
    const int largest = std::numeric_limits<int>::max();
    const std::vector<Rule> mine{PipeRule(largest, u"铸铁管"_s, u"09"_s), DefaultRule()};
    const std::vector<Rule> theirs{PipeRule(largest, u"塑料管"_s, u"08"_s), DefaultRule()};
    EXPECT_EQ(IdsOf(Merged({DefaultRule()}, mine, theirs)), (std::vector{largest, 2, 1}));
}

TEST(MergeRules, IdsThatAFileHasTwiceStay)
{
    std::vector<Rule> base = FourRules;
    base[1].id = 2;
    EXPECT_EQ(IdsOf(Merged(base, base, {base[0], base[1], base[3]})), (std::vector{2, 2, 1}));
}

TEST(MergeRules, MovesOfOneSideAndChangesOfTheOtherMeet)
{
    const std::vector<Rule> mine{FourRules[2], FourRules[0], FourRules[1], FourRules[3]};
    std::vector<Rule> theirs = FourRules;
    theirs[2] = WithMaterial(theirs[2], u"PE管"_s);
    EXPECT_EQ(Told(Merged(FourRules, mine, theirs)),
              Told({theirs[2], FourRules[0], FourRules[1], FourRules[3]}));
    EXPECT_EQ(Told(Merged(FourRules, theirs, mine)),
              Told({theirs[2], FourRules[0], FourRules[1], FourRules[3]}));
}

TEST(MergeRules, RuleThatIsRemovedByOneAndMovedByTheOtherGoes)
{
    const std::vector<Rule> moved{FourRules[2], FourRules[0], FourRules[1], FourRules[3]};
    EXPECT_EQ(Told(Merged(FourRules, moved, {FourRules[0], FourRules[1], FourRules[3]})),
              Told({FourRules[0], FourRules[1], FourRules[3]}));
}

TEST(MergeRules, CountersAreThoseOfWhoeverGaveMost)
{
    std::vector<Rule> mine = FourRules;
    mine[0].counters = {7, 1, 0};
    mine[0] = WithMaterial(mine[0], u"无缝钢管"_s);
    std::vector<Rule> theirs = FourRules;
    theirs[0].counters = {1, 9, 3};
    EXPECT_EQ(Merged(FourRules, mine, theirs)[0].counters, (rules::RuleCounters{7, 9, 3}));
}

TEST(MergeRules, CategoriesOfBothSidesAreThere)
{
    const auto with = [](const CString& name) {
        return test::ConfigurationOf(
            {test::SmallOf(u"给水管"_s, FourRules), test::SmallOf(name, {FourRules[0], DefaultRule()})});
    };
    const Merge merge(Pipes(FourRules), with(u"甲"_s), with(u"乙"_s));
    const rules::Configuration result = merge.Result({});
    EXPECT_EQ(test::RulesIn(result, u"给排水\\管道\\甲"_s).size(), 2U);
    EXPECT_EQ(test::RulesIn(result, u"给排水\\管道\\乙"_s).size(), 2U);
}

TEST(MergeRules, DefaultRuleOfACategoryThatBothMadeStaysBehindTheRules)
{
    const rules::Configuration none = test::ConfigurationOf({});
    const Merge merge(none, Pipes({FourRules[0], DefaultRule()}), Pipes({FourRules[1], DefaultRule()}));
    EXPECT_EQ(Told(Merged(merge)), Told({FourRules[0], FourRules[1], DefaultRule()}));
    const Merge bare(none, Pipes({DefaultRule()}), Pipes({FourRules[1], DefaultRule()}));
    EXPECT_EQ(Told(Merged(bare)), Told({FourRules[1], DefaultRule()}));
}

TEST(MergeRules, CategoryThatOneSideTookOutGoesUnlessTheOtherChangedIt)
{
    const rules::Configuration none = test::ConfigurationOf({});
    EXPECT_EQ(Merge(Pipes(FourRules), none, Pipes(FourRules)).Result({}).Find(test::PipeCategory), nullptr);
    std::vector<Rule> changed = FourRules;
    changed[0] = WithMaterial(changed[0], u"无缝钢管"_s);
    const Merge merge(Pipes(FourRules), none, Pipes(changed));
    ASSERT_EQ(merge.Conflicts().size(), 1U);
    EXPECT_EQ(merge.Conflicts()[0].kind, ConflictKind::Removed);
    EXPECT_EQ(Told(Merged(merge, Side::Theirs)), Told(std::vector{changed[0]}));
    EXPECT_TRUE(Merged(merge, Side::Mine).empty());
}

TEST(MergeConflicts, RuleThatBothChangedDifferently)
{
    std::vector<Rule> mine = FourRules;
    mine[0] = WithMaterial(mine[0], u"无缝钢管"_s);
    std::vector<Rule> theirs = FourRules;
    theirs[0].bills[0].record.strFormula = u"管道长度"_s;
    const Merge merge(Pipes(FourRules), Pipes(mine), Pipes(theirs));
    ASSERT_EQ(merge.Conflicts().size(), 1U);
    EXPECT_EQ(merge.Conflicts()[0].Describe(),
              u"给排水\\管道\\给水管：两边都改了：材质＝钢管;\n  我方：第 1 条 材质＝无缝钢管;\n"
              "      条件 材质＝钢管 改为 材质＝无缝钢管\n  对方：第 1 条 材质＝钢管;\n"
              "      清单 01 名称01：工程量 （空） 改为 管道长度\n"_s);
    EXPECT_EQ(Told(Merged(merge, Side::Mine)), Told(mine));
    EXPECT_EQ(Told(Merged(merge, Side::Theirs)), Told(theirs));
}

TEST(MergeConflicts, RuleThatOneChangedAndTheOtherRemoved)
{
    std::vector<Rule> mine = FourRules;
    mine[1] = WithMaterial(mine[1], u"紫铜管"_s);
    const std::vector<Rule> theirs{FourRules[0], FourRules[2], FourRules[3]};
    const Merge merge(Pipes(FourRules), Pipes(mine), Pipes(theirs));
    ASSERT_EQ(merge.Conflicts().size(), 1U);
    EXPECT_EQ(merge.Conflicts()[0].kind, ConflictKind::Removed);
    EXPECT_TRUE(merge.Conflicts()[0].Describe().contains(u"对方：删了这条规则"_s));
    EXPECT_EQ(Told(Merged(merge, Side::Mine)), Told(mine));
    EXPECT_EQ(Told(Merged(merge, Side::Theirs)), Told(theirs));
}

TEST(MergeConflicts, RulesThatBothAddedForTheSameConditions)
{
    const std::vector<Rule> mine{FourRules[0], PipeRule(5, u"铸铁管"_s, u"09"_s), FourRules[3]};
    const std::vector<Rule> theirs{FourRules[0], PipeRule(5, u"铸铁管"_s, u"08"_s), FourRules[3]};
    const Merge merge(Pipes({FourRules[0], FourRules[3]}), Pipes(mine), Pipes(theirs));
    ASSERT_EQ(merge.Conflicts().size(), 1U);
    EXPECT_EQ(merge.Conflicts()[0].kind, ConflictKind::AddedTwice);
    EXPECT_EQ(Told(Merged(merge, Side::Mine)), Told(mine));
    EXPECT_EQ(Told(Merged(merge, Side::Theirs)), Told(theirs));
}

TEST(MergeConflicts, RuleThatBothMovedElsewhere)
{
    const std::vector<Rule> base{FourRules[0],
                                 FourRules[1],
                                 FourRules[2],
                                 PipeRule(5, u"铸铁管"_s, u"09"_s),
                                 PipeRule(6, u"塑料管"_s, u"08"_s),
                                 FourRules[3]};
    const std::vector<Rule> mine{base[4], base[0], base[1], base[2], base[3], base[5]};
    const std::vector<Rule> theirs{base[0], base[1], base[4], base[2], base[3], base[5]};
    const Merge merge(Pipes(base), Pipes(mine), Pipes(theirs));
    ASSERT_EQ(merge.Conflicts().size(), 1U);
    EXPECT_EQ(merge.Conflicts()[0].kind, ConflictKind::Moved);
    EXPECT_TRUE(merge.Conflicts()[0].Describe().contains(u"对方：移到第 3 条"_s));
    EXPECT_EQ(Told(Merged(merge, Side::Mine)), Told(mine));
    EXPECT_EQ(Told(Merged(merge, Side::Theirs)), Told(theirs));
}

TEST(MergeConflicts, EveryOneNeedsAnAnswer)
{
    std::vector<Rule> mine = FourRules;
    mine[0] = WithMaterial(mine[0], u"甲"_s);
    std::vector<Rule> theirs = FourRules;
    theirs[0] = WithMaterial(theirs[0], u"乙"_s);
    const Merge merge(Pipes(FourRules), Pipes(mine), Pipes(theirs));
    EXPECT_THROW(merge.Result({}), std::invalid_argument);
    EXPECT_THROW(merge.Result({Side::Mine, Side::Mine}), std::invalid_argument);
}
