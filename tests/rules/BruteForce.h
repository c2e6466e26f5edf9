#pragma once

#include "rules/CoverageLists.h"
#include "rules/match/CategoryMatcher.h"

/// Which rules hold for which components, by going through all combinations of elementary values with the
/// slow matcher of docs/matching.md.
namespace test {

using Mask = unsigned; ///< of rules, one bit each

/// Everything gone through: which rules hold for which combination of elementary values.
class BruteForce
{
public:
    BruteForce(const std::vector<rules::Rule>& list, const ListKind& kind, const rules::CategoryFacts& facts);

    const std::vector<std::vector<std::size_t>>& Places() const { return m_places; }
    const std::vector<rules::Cell>& Values(std::size_t attribute) const { return m_values[attribute]; }
    /// The rules that hold at each place.
    const std::vector<Mask>& Holding() const { return m_holding; }
    Mask HoldingAt(const std::vector<std::size_t>& place) const;

    /// The numbers of an attribute that components may have, ascending, as indexes of its values.
    const std::vector<std::size_t>& Line(std::size_t attribute) const { return m_lines[attribute]; }

private:
    void CollectValues(std::size_t attribute, const ListKind& kind);
    void Evaluate(std::size_t attribute, const std::vector<rules::Rule>& list,
                  const rules::CategoryFacts& facts);
    bool Next(std::vector<std::size_t>& place) const;

    std::vector<std::vector<rules::Cell>> m_values;
    std::vector<std::vector<std::size_t>> m_lines;
    std::vector<std::vector<Mask>> m_masks; ///< by attribute and value
    std::vector<std::vector<std::size_t>> m_places;
    std::vector<Mask> m_holding; ///< by place
};

} // namespace test
