#include "rules/draft/ListChange.h"

#include "rules/compare/RulePairing.h"

#include <algorithm>

namespace rules {

ListChange::ListChange(const SmallCategory& category)
    : m_category(category), m_places(category.rules.size(), RulePairing::None)
{
}

void ListChange::Keep(std::size_t index)
{
    m_places[index] = static_cast<int>(m_origins.size());
    m_origins.push_back(index);
}

void ListChange::KeepRange(std::size_t first, std::size_t end)
{
    for (; first < end; ++first)
        Keep(first);
}

void ListChange::Put(Rule rule)
{
    m_made.emplace_back(m_origins.size(), std::move(rule));
    m_origins.push_back(None);
}

const Rule& ListChange::RuleAt(std::size_t index) const
{
    if (m_origins[index] != None) return m_category.rules[m_origins[index]];
    return std::lower_bound(m_made.begin(), m_made.end(), index,
                            [](const auto& made, std::size_t wanted) { return made.first < wanted; })
        ->second;
}

void ListChange::AppendTo(Edit& edit)
{
    const std::vector<Rule>& rules = m_category.rules;
    const std::vector<bool> isMoved = FindMoved(m_places);
    std::size_t oldBegin = 0; // behind the last rule that stays where it is
    std::size_t newBegin = 0;
    const auto replaceUpTo = [&](std::size_t oldEnd, std::size_t newEnd) {
        if (oldBegin == oldEnd && newBegin == newEnd) return;
        Splice& splice = edit.splices.emplace_back();
        splice.category = m_category.text;
        splice.position = newBegin; // all before it is as it is to be by then
        splice.removed.assign(rules.begin() + static_cast<std::ptrdiff_t>(oldBegin),
                              rules.begin() + static_cast<std::ptrdiff_t>(oldEnd));
        for (std::size_t i = newBegin; i < newEnd; ++i)
            splice.inserted.push_back(RuleAt(i));
    };
    for (std::size_t i = 0; i < m_origins.size(); ++i) {
        const std::size_t origin = m_origins[i];
        if (origin == None || isMoved[origin]) continue;
        replaceUpTo(origin, i);
        oldBegin = origin + 1;
        newBegin = i + 1;
    }
    replaceUpTo(rules.size(), m_origins.size());
}

} // namespace rules
