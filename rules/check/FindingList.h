#pragma once

#include "rules/check/Finding.h"
#include "rules/model/Configuration.h"

#include <cstddef>

namespace rules {

/// Findings as the checks make them.
class FindingList
{
public:
    /// A finding about something above the rules.
    Finding& Add(FindingCode code, const CString& category, const CString& text);
    /// One about the rule at an index of a category.
    Finding& Add(FindingCode code, const SmallCategory& category, std::size_t rule, const CString& text);

    std::vector<Finding>& All() noexcept { return m_findings; }

private:
    std::vector<Finding> m_findings;
};

/// Whether an operation by the rule's id reaches this rule: no other one of the list has the id.
bool IsReached(const SmallCategory& category, std::size_t rule);

/// How many of the entries have that id.
template <typename Entry>
std::size_t CountOfId(const std::vector<Entry>& entries, int id)
{
    std::size_t count = 0;
    for (const Entry& entry : entries)
        count += entry.id == id ? 1 : 0;
    return count;
}

/// "第 1、3 条", the first few of many; indexes from 0.
CString RulesText(const std::vector<std::size_t>& rules);

/// The places of rules, from 1.
std::vector<int> PositionsOf(const std::vector<std::size_t>& rules);

} // namespace rules
