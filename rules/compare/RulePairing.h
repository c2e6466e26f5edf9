#pragma once

#include "rules/model/Configuration.h"

namespace rules {

/// Which rule of one list is which of another one.
struct RulePairing
{
    static constexpr int None = -1;

    std::vector<int> afterOf;  ///< by index in the first list; `None` for a rule that went
    std::vector<int> beforeOf; ///< by index in the second list; `None` for a rule that came
    /// By index in the first list: whether the rule changed its place among those that stayed. As few as
    /// possible are called moved.
    std::vector<bool> isMoved;
};

/// Recognises the rules of two states of one category. A rule is the same by its id; by its content where ids
/// were given anew; and where neither is the same, by its conditions, or by its items when it shares a
/// condition, too. An id alone is no proof: that of a deleted last rule is given out again, so two rules of
/// one id that have no condition and no item in common are two rules.
RulePairing PairRules(const std::vector<Rule>& before, const std::vector<Rule>& after);

/// Given the place of each element in another list, or `None`: which elements have moved. The others are a
/// longest rising sequence, so that as few as possible have.
std::vector<bool> FindMoved(const std::vector<int>& places);

} // namespace rules
