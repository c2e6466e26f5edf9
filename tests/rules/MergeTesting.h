#pragma once

#include "rules/CompareTesting.h"
#include "rules/merge/Merge.h"

#include <gtest/gtest.h>

#include <vector>

/// What the tests of merging share: lists of rules as texts and ids, and what three of them come to.
namespace test {

inline CStringArray Told(const std::vector<rules::Rule>& list)
{
    CStringArray texts;
    for (const rules::Rule& rule : list)
        texts += Told(rule);
    return texts;
}

inline std::vector<int> IdsOf(const std::vector<rules::Rule>& list)
{
    std::vector<int> ids;
    for (const rules::Rule& rule : list)
        ids.push_back(rule.id);
    return ids;
}

inline std::vector<rules::Side> All(const rules::Merge& merge, rules::Side side)
{
    return std::vector<rules::Side>(merge.Conflicts().size(), side);
}

inline std::vector<rules::Rule> Merged(const rules::Merge& merge, rules::Side side = rules::Side::Mine)
{
    return RulesIn(merge.Result(All(merge, side)));
}

/// Expects no conflict and gives the rules.
inline std::vector<rules::Rule> Merged(const std::vector<rules::Rule>& base,
                                       const std::vector<rules::Rule>& mine,
                                       const std::vector<rules::Rule>& theirs)
{
    const rules::Merge merge(Pipes(base), Pipes(mine), Pipes(theirs));
    EXPECT_TRUE(merge.Conflicts().empty()) << merge.Conflicts().front().Describe().toStdString();
    return Merged(merge);
}

} // namespace test
