#include "rules/draft/SplicedList.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace rules {

void SplicedList::Replace(std::size_t position, const std::vector<Rule>& removed,
                          const std::vector<Rule>& inserted)
{
    const std::size_t size = m_before.size() + m_behind.size();
    if (position > size || removed.size() > size - position)
        throw std::logic_error("the list is shorter than the edit says");
    MoveGap(position);
    if (!std::equal(removed.begin(), removed.end(), m_behind.rbegin()))
        throw std::logic_error("other rules stand where the edit is to be made");
    m_behind.resize(m_behind.size() - removed.size());
    m_before.insert(m_before.end(), inserted.begin(), inserted.end());
}

std::vector<Rule> SplicedList::Take() &&
{
    MoveGap(m_before.size() + m_behind.size());
    return std::move(m_before);
}

void SplicedList::MoveGap(std::size_t position)
{
    for (; m_before.size() > position; m_before.pop_back())
        m_behind.push_back(std::move(m_before.back()));
    for (; m_before.size() < position; m_behind.pop_back())
        m_before.push_back(std::move(m_behind.back()));
}

} // namespace rules
