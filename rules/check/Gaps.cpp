#include "rules/check/Gaps.h"

#include <map>
#include <utility>

namespace rules {

namespace {

constexpr std::size_t MostContexts = 64;

/// Goes along the numbers of one attribute, from the upper end of each rule upwards.
class Walk
{
public:
    Walk(const RegionIndex& index, std::size_t attribute, Effort& effort, GapsFound& found)
        : m_index(index), m_space(index.Space()), m_attribute(attribute),
          m_line(index.Space().Attributes()[attribute].line), m_effort(effort), m_found(found)
    {
    }

    void From(std::size_t rule)
    {
        if (!Names(rule)) return;
        const CellSet& cells = m_space.Cells(rule, m_attribute);
        m_hasContext = false;
        for (std::size_t step = 0; step + 1 < m_line.size(); ++step)
            if (cells.Has(m_line[step].cell) && !cells.Has(m_line[step + 1].cell)) Upwards(rule, step);
    }

private:
    bool Names(std::size_t rule) const
    {
        return m_space.HasRange(rule, m_attribute) || m_space.HasEqual(rule, m_attribute);
    }

    bool AreNeighbours(std::size_t below, std::size_t above) const
    {
        if (!Names(above)) return false;
        return m_space.Attributes()[m_attribute].hasList || m_space.HasRange(below, m_attribute) ||
               m_space.HasRange(above, m_attribute);
    }

    /// The rules that meet the rule in all other attributes, and those that hold for all that it holds for
    /// there.
    void FindContext(std::size_t rule)
    {
        m_meeting = m_index.Possible();
        m_containing = m_index.Possible();
        for (std::size_t i = 0; i < m_space.Attributes().size(); ++i) {
            if (i == m_attribute) continue;
            m_meeting &= m_index.Meeting(i, m_space.SetOf(rule, i));
            m_containing &= m_index.Containing(i, m_space.SetOf(rule, i));
        }
        m_hasContext = true;
    }

    void Upwards(std::size_t rule, std::size_t end)
    {
        if (!m_hasContext) FindContext(rule);
        CellSet between(m_index.Rules()); // the rules that take something on the way so far
        for (std::size_t step = end + 1; step < m_line.size(); ++step) {
            const CellSet& holding = m_index.Holding(m_attribute, m_line[step].cell);
            CellSet here = m_meeting;
            here &= holding;
            if (here.IsEmpty()) continue;
            if (step > end + 1) Meet(rule, end, step, here, between);
            if (m_containing.Meets(holding)) return;
            between |= here;
            if (IsTaken(rule, between)) return;
        }
    }

    Region ContextOf(std::size_t rule) const
    {
        Region context = m_space.RegionOf(rule);
        context[m_attribute] = m_space.Sets(m_attribute)[CellSpace::All];
        return context;
    }

    static Cover::Part PartOf(const Region& region)
    {
        Cover::Part part;
        for (const CellSet& cells : region)
            part.push_back(&cells);
        return part;
    }

    std::vector<Cover::Part> PartsOf(const CellSet& rules) const
    {
        std::vector<Cover::Part> parts;
        rules.Each([&](std::size_t rule) {
            Cover::Part& part = parts.emplace_back();
            for (std::size_t i = 0; i < m_space.Attributes().size(); ++i)
                part.push_back(i == m_attribute ? nullptr : &m_space.Cells(rule, i));
        });
        return parts;
    }

    /// Whether the rules on the way have taken every component that the rule is about.
    bool IsTaken(std::size_t rule, const CellSet& between)
    {
        const Region context = ContextOf(rule);
        Cover cover(PartOf(context), PartsOf(between), Cover::Purpose::Answer, m_effort);
        return cover.Ask() == Cover::Answer::Covered;
    }

    /// The way has come to rules again: what none on the way has taken and one of them takes has a gap below
    /// it.
    void Meet(std::size_t rule, std::size_t end, std::size_t step, const CellSet& here,
              const CellSet& between)
    {
        Gap gap{m_attribute, end + 1, step - 1, rule, 0, {}, true};
        std::vector<Region>& told = m_told[{end, step}];
        here.Each([&](std::size_t above) {
            if (!AreNeighbours(rule, above)) return;
            Region context = ContextOf(rule);
            for (std::size_t i = 0; i < context.size(); ++i)
                if (i != m_attribute) context[i] &= m_space.Cells(above, i);
            std::vector<Cover::Part> parts = PartsOf(between);
            for (const Region& region : told)
                parts.push_back(PartOf(region));
            Cover cover(PartOf(context), parts, Cover::Purpose::Rest, m_effort);
            bool isAll = true;
            std::vector<Region> rest = cover.Rest(MostContexts, isAll);
            gap.isAll = gap.isAll && isAll;
            if (rest.empty()) return;
            if (gap.contexts.empty()) gap.above = above;
            // The regions that others point to must not move.
            told.insert(told.end(), rest.begin(), rest.end());
            gap.contexts.insert(gap.contexts.end(), rest.begin(), rest.end());
        });
        if (m_effort.left < 0) m_found.isDecided = false;
        if (!gap.contexts.empty()) m_found.gaps.push_back(std::move(gap));
    }

    const RegionIndex& m_index;
    const CellSpace& m_space;
    std::size_t m_attribute;
    const std::vector<CellSpace::Step>& m_line;
    Effort& m_effort;
    GapsFound& m_found;
    CellSet m_meeting;
    CellSet m_containing;
    bool m_hasContext = false;
    std::map<std::pair<std::size_t, std::size_t>, std::vector<Region>> m_told; ///< by the steps around a gap
};

} // namespace

GapsFound GapsOf(const RegionIndex& index, long long effort)
{
    GapsFound found;
    Effort left{effort};
    for (std::size_t attribute = 0; attribute < index.Space().Attributes().size(); ++attribute) {
        if (index.Space().Attributes()[attribute].line.size() < 2) continue;
        Walk walk(index, attribute, left, found);
        index.Possible().Each([&](std::size_t rule) {
            if (left.left < 0)
                found.isDecided = false;
            else
                walk.From(rule);
        });
    }
    return found;
}

} // namespace rules
