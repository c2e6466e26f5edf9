#include "editor/docks/details/ChosenRules.h"

#include "editor/session/WorkSession.h"

#include <algorithm>
#include <utility>

namespace editor {

namespace {

/// The attributes that both have. Values are those of either, for what fits one category is no fault in the
/// other.
rules::CategoryFacts Common(rules::CategoryFacts attributes, const rules::CategoryFacts& others)
{
    const auto find = [&](const CString& name) {
        return std::find_if(others.begin(), others.end(), [&](const auto& one) { return one.name == name; });
    };
    std::erase_if(attributes, [&](const auto& one) { return find(one.name) == others.end(); });
    for (rules::AttributeFacts& one : attributes) {
        const rules::AttributeFacts& other = *find(one.name);
        one.allowsRange = one.allowsRange && other.allowsRange;
        for (const CString& value : other.valueList)
            if (!one.valueList.contains(value)) one.valueList.append(value);
    }
    return attributes;
}

} // namespace

rules::RulePlaces RulesInView::Places() const
{
    rules::RulePlaces places;
    for (const Entry& entry : m_entries)
        places[entry.category->text].push_back(entry.position);
    return places;
}

void ChosenRules::Follow()
{
    m_category = m_session.CategoryText();
    m_places = m_session.ChosenPlaces();
    m_name.clear();
    m_attributes = Facts().AttributesOf(m_category);
    for (const auto& [text, positions] : m_places) {
        const rules::SmallCategoryPtr category = m_session.DraftSoFar().Find(text);
        for (const std::size_t position : positions)
            m_name[text].push_back(category->rules[position].id);
        if (text != m_category) m_attributes = Common(std::move(m_attributes), Facts().AttributesOf(text));
    }
}

RulesInView ChosenRules::Look() const
{
    std::vector<RulesInView::Entry> entries;
    for (const auto& [text, positions] : m_places) {
        const rules::SmallCategoryPtr category = m_session.DraftSoFar().Find(text);
        if (!category) continue;
        const std::vector<rules::Rule>& rules = category->rules;
        const std::vector<int>& ids = m_name.at(text);
        std::vector<std::size_t> present;
        for (std::size_t i = 0; i < positions.size(); ++i) {
            // Ids may stand twice in a file, so the rule that still is where it was comes first.
            const std::size_t former = positions[i];
            const auto hasId = [&](const rules::Rule& rule) { return rule.id == ids[i]; };
            const auto found = former < rules.size() && hasId(rules[former])
                                   ? rules.begin() + static_cast<std::ptrdiff_t>(former)
                                   : std::find_if(rules.begin(), rules.end(), hasId);
            if (found != rules.end()) present.push_back(static_cast<std::size_t>(found - rules.begin()));
        }
        std::sort(present.begin(), present.end());
        present.erase(std::unique(present.begin(), present.end()), present.end());
        for (const std::size_t position : present)
            entries.push_back({category, position});
    }
    return RulesInView(std::move(entries));
}

std::size_t ChosenRules::Count() const noexcept
{
    std::size_t count = 0;
    for (const auto& [category, ids] : m_name)
        count += ids.size();
    return count;
}

const ProjectFacts& ChosenRules::Facts() const
{
    return *m_session.Facts();
}

// An edit chooses what it has put in. Here that is what was chosen, or, when the choice has moved on while
// something was being typed, what nobody looks at any more.
std::size_t ChosenRules::Do(const rules::Edit& edit) const
{
    const CString category = m_session.CategoryText();
    const rules::RulePlaces places = m_session.ChosenPlaces();
    const auto current = m_session.CurrentRule();
    m_session.Do(edit);
    if (current) m_session.ChoosePlaces(places, category, *current);
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
    const RulesInView::Entry& place = view.Place(0);
    Do(rules::ChangeRule(m_session.Draft(), place.category->text, place.position, std::move(changed), text));
    return true;
}

} // namespace editor
