#pragma once

#include "rules/compare/RulePairing.h"

namespace rules {

/// One rule that differs. The indexes are those in the lists of the two states.
struct RuleDifference
{
    int before = RulePairing::None; ///< `None` for a rule that was added
    int after = RulePairing::None;  ///< `None` for a rule that was removed
    bool isMoved = false;
    bool isChanged = false; ///< conditions or items; a rule that was added or removed is neither

    bool IsAdded() const noexcept { return before == RulePairing::None; }
    bool IsRemoved() const noexcept { return after == RulePairing::None; }
};

/// A small category whose rules differ.
struct CategoryDifference
{
    CString text;            ///< specialty, big category and name, joined by backslashes
    SmallCategoryPtr before; ///< null where only the second state has the category
    SmallCategoryPtr after;  ///< null where only the first one has
    /// In the order of the second state, what was removed at the place where it stood.
    std::vector<RuleDifference> rules;

    /// The rule as it is, or was before it was removed.
    const Rule& RuleOf(const RuleDifference& difference) const;
};

/// What has to happen to the rules of one state to give those of another one.
struct Comparison
{
    std::vector<CategoryDifference>
        categories;             ///< in the order of the second state, those that went at the end
    std::size_t completed = 0;  ///< small categories that got nothing but an empty default rule
    std::size_t dropped = 0;    ///< small categories that went and had nothing else
    std::size_t renumbered = 0; ///< rules that differ in their id alone

    std::size_t Added() const;
    std::size_t Removed() const;
    std::size_t Changed() const;
    std::size_t Moved() const; ///< those that were changed, too, included

    /// Whether all rules are the same. Ids may differ.
    bool HasNoDifferences() const { return categories.empty() && completed == 0 && dropped == 0; }
};

/// Compares all rules. What is no rule (version, head, counters, places of categories) is not looked at. The
/// result keeps the categories alive that it tells of.
Comparison Compare(const Configuration& before, const Configuration& after);

} // namespace rules
