#include "editor/docks/details/ChosenRules.h"

#include "editor/session/WorkSession.h"
#include "rules/draft/RuleEdits.h"

#include <algorithm>

namespace editor {

void ChosenRules::Follow()
{
    m_name = {m_session.CategoryText(), {}};
    m_positions.clear();
    const rules::SmallCategoryPtr category = m_session.Category();
    if (!category) return;
    for (const std::size_t position : m_session.ChosenRules()) {
        m_positions.push_back(position);
        m_name.ids.push_back(category->rules[position].id);
    }
}

RulesInView ChosenRules::Look() const
{
    RulesInView view;
    view.category = m_session.Draft().Find(m_name.category);
    if (!view.category) return view;
    const std::vector<rules::Rule>& rules = view.category->rules;
    for (std::size_t i = 0; i < m_positions.size(); ++i) {
        std::size_t position = m_positions[i];
        // Ids may stand twice in a file, so the rule that still is where it was comes first.
        if (position >= rules.size() || rules[position].id != m_name.ids[i]) {
            const auto found = std::find_if(rules.begin(), rules.end(),
                                            [&](const auto& rule) { return rule.id == m_name.ids[i]; });
            if (found == rules.end()) continue;
            position = static_cast<std::size_t>(found - rules.begin());
        }
        view.positions.push_back(position);
    }
    std::sort(view.positions.begin(), view.positions.end());
    view.positions.erase(std::unique(view.positions.begin(), view.positions.end()), view.positions.end());
    return view;
}

const ProjectFacts& ChosenRules::Facts() const
{
    return *m_session.Facts();
}

const rules::CategoryFacts& ChosenRules::Attributes() const
{
    return Facts().AttributesOf(m_name.category);
}

// An edit chooses what it has put in. Here that is what was chosen, or, when the choice has moved on while
// something was being typed, what nobody looks at any more.
std::size_t ChosenRules::Do(const rules::Edit& edit) const
{
    const CString category = m_session.CategoryText();
    const std::vector<std::size_t> positions = m_session.ChosenRules();
    const auto current = m_session.CurrentRule();
    m_session.Do(edit);
    m_session.ChooseCategory(category);
    m_session.ChooseRules(positions, current);
    std::size_t changed = 0;
    for (const rules::Splice& splice : edit.splices)
        changed += splice.inserted.size();
    return changed;
}

bool ChosenRules::Change(const CString& text, const std::function<void(rules::Rule&)>& change) const
{
    const RulesInView view = Look();
    if (!view.IsSingle()) return false;
    rules::Rule changed = view.At(0);
    change(changed);
    Do(rules::ChangeRule(m_session.Draft(), m_name.category, view.positions.front(), std::move(changed),
                         text));
    return true;
}

} // namespace editor
