#include "rules/check/RegionIndex.h"

namespace rules {

RegionIndex::RegionIndex(const CellSpace& space, std::size_t rules)
    : m_space(space), m_rules(rules), m_possible(rules), m_attributes(space.Attributes().size())
{
    for (std::size_t rule = 0; rule < rules; ++rule)
        if (space.IsPossible(rule)) m_possible.Add(rule);
    for (std::size_t attribute = 0; attribute < m_attributes.size(); ++attribute)
        Make(attribute);
}

void RegionIndex::Make(std::size_t attribute)
{
    Attribute& made = m_attributes[attribute];
    const std::vector<CellSet>& sets = m_space.Sets(attribute);
    std::vector<CellSet> having(sets.size(), CellSet(m_rules)); // the rules of each set
    m_possible.Each([&](std::size_t rule) { having[m_space.SetOf(rule, attribute)].Add(rule); });
    const std::size_t cells = m_space.Attributes()[attribute].count;
    made.holding.assign(cells, CellSet(m_rules));
    for (std::size_t set = 0; set < sets.size(); ++set)
        sets[set].Each([&](std::size_t cell) { made.holding[cell] |= having[set]; });
    made.meeting.assign(sets.size(), CellSet(m_rules));
    made.containing.assign(sets.size(), m_possible);
    for (std::size_t set = 0; set < sets.size(); ++set)
        sets[set].Each([&](std::size_t cell) {
            made.meeting[set] |= made.holding[cell];
            made.containing[set] &= made.holding[cell];
        });
}

} // namespace rules
