#include "rules/sql/StepList.h"

#include <algorithm>
#include <set>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace rules {

StepList::StepList(CStringArray names)
{
    for (CString& name : names)
        m_steps.push_back({std::move(name), {}});
}

void StepList::Define(const CString& step, const CString& name, const CString& expression,
                      const CStringArray& uses)
{
    const auto found =
        std::find_if(m_steps.begin(), m_steps.end(), [&](const Step& one) { return one.name == step; });
    if (found == m_steps.end()) throw std::logic_error("no such step of the query");
    found->definitions.push_back({name, expression, uses});
}

bool StepList::Defines(const Step& step, const CString& name)
{
    return std::any_of(step.definitions.begin(), step.definitions.end(),
                       [&](const Definition& definition) { return definition.name == name; });
}

/// What each step selects, worked out from the end: what a later step needs and does not define itself.
std::vector<CStringArray> StepList::SelectedFor(const CStringArray& wanted) const
{
    std::vector<CStringArray> selected(m_steps.size());
    std::set<CString> needed(wanted.begin(), wanted.end());
    for (std::size_t i = m_steps.size(); i-- > 0;) {
        const Step& step = m_steps[i];
        selected[i] = CStringArray(needed.begin(), needed.end());
        std::set<CString> before;
        for (const CString& name : needed)
            if (!Defines(step, name)) before.insert(name);
        for (const Definition& definition : step.definitions)
            if (needed.contains(definition.name))
                before.insert(definition.uses.begin(), definition.uses.end());
        needed = std::move(before);
    }
    return selected;
}

CStringArray StepList::Text(const CStringArray& wanted, const CString& source, const Dialect& dialect) const
{
    const std::vector<CStringArray> selected = SelectedFor(wanted);
    CStringArray made;
    CString from = source;
    for (std::size_t i = 0; i < m_steps.size(); ++i) {
        const Step& step = m_steps[i];
        CStringArray columns;
        bool isNew = false;
        for (const CString& name : selected[i]) {
            const auto defined =
                std::find_if(step.definitions.begin(), step.definitions.end(),
                             [&](const Definition& definition) { return definition.name == name; });
            isNew = isNew || defined != step.definitions.end();
            columns.append(defined == step.definitions.end() ? name : defined->expression + u" AS "_s + name);
        }
        if (!isNew) continue;
        made.append(step.name + u" AS (\n  SELECT "_s + columns.join(u",\n    "_s) + u"\n  FROM "_s + from +
                    dialect.EndOfStep() + u")"_s);
        from = step.name;
    }
    return made;
}

} // namespace rules
