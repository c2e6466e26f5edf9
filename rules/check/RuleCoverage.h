#pragma once

#include "rules/check/Cover.h"
#include "rules/check/RegionIndex.h"

namespace rules {

/// What the rules before a rule leave of it.
struct RuleCoverage
{
    enum class State {
        Applies,    ///< to some components
        Hidden,     ///< all that it holds for is taken by `hiders`
        Impossible, ///< it holds for nothing, or is a default rule
        Undecided,  ///< the effort was used up
    };

    State state = State::Applies;
    std::vector<std::size_t> hiders; ///< ascending
    bool isSmallest = true;          ///< whether no smaller set of rules hides it

    /// Of a rule that applies, and from which rules take a part that also reach beyond it; exceptions in
    /// front, which lie within it, do not count. Ascending.
    std::vector<std::size_t> takers;
    std::vector<Region> left; ///< what all rules before it leave, when `takers` is not empty
    bool isLeftAll = true;    ///< whether `left` is all of it
};

/// The most regions that `RuleCoverage::left` holds.
inline constexpr std::size_t MostLeft = 8;

/// Of every rule of the list, in its order. Exact but for those that are undecided: that `effort`, in
/// comparisons for the whole list, did not do for.
KTQDDE_RULES_EXPORT std::vector<RuleCoverage> CoverageOf(const RegionIndex& index,
                                                         long long effort = UsualEffort);

/// Whether the rules take every component that has a text for each attribute that they test, so that the
/// default rule gets only those that lack one.
KTQDDE_RULES_EXPORT Cover::Answer CoversAllFilled(const RegionIndex& index, long long effort = UsualEffort);

} // namespace rules
