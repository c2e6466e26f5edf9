#pragma once

#include "rules/check/Cover.h"
#include "rules/check/RegionIndex.h"

namespace rules {

/// Numbers of an attribute that no rule takes although rules take the numbers below and above, for components
/// that are alike in all other attributes. Rules count as neighbours that name the numbers by ＝ or a range;
/// where the attribute has no value list, at least one of the two by a range, since single numbers leave
/// nothing out that somebody meant.
struct Gap
{
    std::size_t attribute = 0;
    std::size_t first = 0; ///< index in `CellSpace::Attribute::line`
    std::size_t last = 0;  ///< the last one, too
    std::size_t below = 0; ///< the rule that takes the number below; of several the first
    std::size_t above = 0; ///< the same of the number above
    /// The components that it is about, as regions over all attributes, the cells of `attribute` being all.
    std::vector<Region> contexts;
    bool isAll = true; ///< whether these are all of this pair's
};

struct GapsFound
{
    std::vector<Gap> gaps; ///< by rule below, no component in two of them at one place
    bool isDecided = true; ///< false when the effort was used up: there may be more
};

/// The gaps of a list of rules.
KTQDDE_RULES_EXPORT GapsFound GapsOf(const RegionIndex& index, long long effort = UsualEffort);

} // namespace rules
