#pragma once

#include "rules/check/CellSpace.h"

namespace rules {

/// Which rules meet which cells, so that those that have to do with a region are found by joining sets of
/// rules. Rules that can hold for nothing are in none of them.
class KTQDDE_RULES_EXPORT RegionIndex
{
public:
    /// The space must stay; it is that of a list of so many rules.
    RegionIndex(const CellSpace& space, std::size_t rules);

    const CellSpace& Space() const noexcept { return m_space; }
    std::size_t Rules() const noexcept { return m_rules; }
    const CellSet& Possible() const noexcept { return m_possible; }

    /// The rules that hold for a cell of an attribute, as far as that goes.
    const CellSet& Holding(std::size_t attribute, std::size_t cell) const
    {
        return m_attributes[attribute].holding[cell];
    }
    /// Those whose cells meet a set of the attribute, and those that hold all of it.
    const CellSet& Meeting(std::size_t attribute, std::uint32_t set) const
    {
        return m_attributes[attribute].meeting[set];
    }
    const CellSet& Containing(std::size_t attribute, std::uint32_t set) const
    {
        return m_attributes[attribute].containing[set];
    }

private:
    struct Attribute
    {
        std::vector<CellSet> holding;    ///< by cell
        std::vector<CellSet> meeting;    ///< by set
        std::vector<CellSet> containing; ///< by set
    };

    void Make(std::size_t attribute);

    const CellSpace& m_space;
    std::size_t m_rules;
    CellSet m_possible;
    std::vector<Attribute> m_attributes;
};

} // namespace rules
