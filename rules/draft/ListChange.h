#pragma once

#include "rules/draft/Edit.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace rules {

/// The rules of a category as they are to be, put together from the start to the end: those that stay as they
/// are, in whatever order, and those that come. Finds the few pieces that have to be replaced.
class ListChange
{
public:
    /// The category must outlive this.
    explicit ListChange(const SmallCategory& category);

    /// The rule at that index of the category comes here. Each at most once.
    void Keep(std::size_t index);
    /// All rules from one index to before another one.
    void KeepRange(std::size_t first, std::size_t end);
    /// A rule comes here, with its ids.
    void Put(Rule rule);

    /// The splices, appended to those of an edit. None where nothing differs.
    void AppendTo(Edit& edit);

private:
    static constexpr std::size_t None = static_cast<std::size_t>(-1);

    /// The rule at an index of the new list.
    const Rule& RuleAt(std::size_t index) const;

    const SmallCategory& m_category;
    std::vector<int> m_places;                        ///< in the new list, by index in the old one
    std::vector<std::size_t> m_origins;               ///< in the old list; None for what comes
    std::vector<std::pair<std::size_t, Rule>> m_made; ///< by index in the new list
};

} // namespace rules
