#include "editor/session/WorkSession.h"

#include "editor/project/Project.h"

#include <algorithm>
#include <set>
#include <utility>

// What is chosen in the draft.

namespace editor {

namespace {

/// A category's specialty: the first level of its text.
CString SpecialtyOf(const CString& category)
{
    return category.section(u'\\', 0, 0);
}

/// Sorted, each once, and none that the category has not.
void Trim(std::vector<std::size_t>& positions, const rules::SmallCategoryPtr& category)
{
    const std::size_t count = category ? category->rules.size() : 0;
    std::sort(positions.begin(), positions.end());
    positions.erase(std::unique(positions.begin(), positions.end()), positions.end());
    while (!positions.empty() && positions.back() >= count)
        positions.pop_back();
}

/// Where a rule that stood at that position stands among these.
std::optional<std::size_t> PlaceOf(const rules::Rule& rule, std::size_t position,
                                   const std::vector<rules::Rule>& present)
{
    const auto isIt = [&](const rules::Rule& other) {
        return rule.isDefault ? other.isDefault : !other.isDefault && other.id == rule.id;
    };
    if (position < present.size() && isIt(present[position])) return position;
    const auto found = std::find_if(present.begin(), present.end(), isIt);
    if (found == present.end()) return std::nullopt;
    return static_cast<std::size_t>(found - present.begin());
}

} // namespace

/// The category that will be chosen when a file is opened. Empty when only the file can tell: the catalogue
/// does not know it.
CString WorkSession::FirstCategory() const
{
    const CString specialty = m_specialty.isEmpty() ? m_project->Spec() : m_specialty;
    const auto last = m_lastCategories.find(specialty);
    CString wanted = SpecialtyOf(m_category) == specialty ? m_category : CString();
    if (wanted.isEmpty() && last != m_lastCategories.end()) wanted = last->second;
    if (!wanted.isEmpty()) return m_facts->offered->Find(wanted) ? wanted : CString();
    for (const rules::Specialty& one : m_facts->offered->Specialties())
        if (one.name == specialty)
            for (const rules::BigCategory& big : one.bigCategories)
                if (!big.smallCategories.empty()) return big.smallCategories.front()->text;
    return {};
}

/// To be called before another category is chosen, or something in it.
void WorkSession::NeedCategory(const CString& text) const
{
    if (text != m_category) TakeRest();
}

/// What the change has brought into the chosen category is chosen, else the same rules as before, wherever
/// they stand now.
void WorkSession::FollowRules(const rules::SmallCategoryPtr& former)
{
    const rules::SmallCategoryPtr present = Category();
    if (!former || !present || former == present) return;
    std::set<int> known;
    std::set<int> chosen;
    for (std::size_t i = 0; i < former->rules.size(); ++i) {
        known.insert(former->rules[i].id);
        if (std::binary_search(m_rules.begin(), m_rules.end(), i)) chosen.insert(former->rules[i].id);
    }
    const rules::Rule* const current = m_current ? &former->rules[*m_current] : nullptr;
    std::vector<std::size_t> made;
    std::vector<std::size_t> kept;
    std::optional<std::size_t> cursor;
    for (std::size_t i = 0; i < present->rules.size(); ++i) {
        const int id = present->rules[i].id;
        if (!known.contains(id)) made.push_back(i);
        if (chosen.contains(id)) kept.push_back(i);
        if (current != nullptr && id == current->id) cursor = i;
    }
    if (!made.empty())
        ChooseInCategory(made, made.front());
    else if (!kept.empty())
        ChooseInCategory(kept, cursor);
    else if (m_current) // those that were chosen are gone: the one that stands there now
        ChooseInCategory({std::min(*m_current, present->rules.size() - 1)}, std::nullopt);
}

rules::SmallCategoryPtr WorkSession::Category() const
{
    return m_draft.Find(m_category);
}

void WorkSession::ChooseSpecialty(const CString& name)
{
    if (name == m_specialty) return;
    TakeRest();
    const auto& all = m_draft.Specialties();
    if (std::none_of(all.begin(), all.end(), [&](const auto& one) { return one.name == name; })) return;
    m_specialty = name;
    m_category.clear();
    KeepChoiceValid();
    emit SpecialtyChosen();
    emit CategoryChosen();
    emit RulesChosen();
}

void WorkSession::ChooseCategory(const CString& text)
{
    NeedCategory(text);
    if (text == m_category || !m_draft.Find(text)) return;
    const bool isOtherSpecialty = SpecialtyOf(text) != m_specialty;
    m_specialty = SpecialtyOf(text);
    m_category = text;
    m_lastCategories[m_specialty] = text;
    m_rules.clear();
    m_current.reset();
    m_elsewhere.clear();
    KeepChoiceValid();
    if (isOtherSpecialty) emit SpecialtyChosen();
    emit CategoryChosen();
    emit RulesChosen();
}

rules::RulePlaces WorkSession::ChosenPlaces() const
{
    rules::RulePlaces places = m_elsewhere;
    if (!m_rules.empty()) places[m_category] = m_rules;
    return places;
}

void WorkSession::ChoosePlaces(rules::RulePlaces places, const CString& category, std::size_t position)
{
    for (const auto& [text, positions] : places)
        NeedCategory(text);
    ChooseCategory(category);
    if (m_category != category) return;
    auto own = std::move(places[category]);
    places.erase(category);
    const bool isOtherElsewhere = places != m_elsewhere;
    m_elsewhere = std::move(places);
    KeepChoiceValid();
    const auto chosen = std::pair(m_rules, m_current);
    ChooseInCategory(std::move(own), position);
    if (isOtherElsewhere || chosen != std::pair(m_rules, m_current)) emit RulesChosen();
}

void WorkSession::ChooseRules(std::vector<std::size_t> positions, std::optional<std::size_t> current)
{
    const auto chosen = std::pair(m_rules, m_current);
    const bool hadOthers = !m_elsewhere.empty();
    m_elsewhere.clear();
    ChooseInCategory(std::move(positions), current);
    if (hadOthers || chosen != std::pair(m_rules, m_current)) emit RulesChosen();
}

/// Emits nothing.
void WorkSession::ChooseInCategory(std::vector<std::size_t> positions, std::optional<std::size_t> current)
{
    const rules::SmallCategoryPtr category = Category();
    Trim(positions, category);
    if (current && !std::binary_search(positions.begin(), positions.end(), *current)) current.reset();
    if (!current && !positions.empty()) current = positions.front();
    m_rules = std::move(positions);
    m_current = current;
}

void WorkSession::GoTo(const CString& category, std::size_t position)
{
    ChooseCategory(category);
    if (category == m_category) ChooseRules({position}, position);
}

bool WorkSession::GoToRule(const CString& category, const rules::Rule& rule, std::size_t position)
{
    ChooseCategory(category);
    if (category != m_category) return false;
    const auto place = PlaceOf(rule, position, Category()->rules);
    if (place) ChooseRules({*place}, place);
    return place.has_value();
}

/// The category that was last chosen in the specialty, else its first one; none where it has none.
CString WorkSession::UsualCategory() const
{
    const auto last = m_lastCategories.find(m_specialty);
    if (last != m_lastCategories.end() && m_draft.Find(last->second)) return last->second;
    for (const rules::Specialty& specialty : m_draft.Specialties())
        if (specialty.name == m_specialty)
            for (const rules::BigCategory& big : specialty.bigCategories)
                if (!big.smallCategories.empty()) return big.smallCategories.front()->text;
    return {};
}

/// Emits nothing: whoever changes the draft says so itself.
void WorkSession::KeepChoiceValid()
{
    const auto& all = m_draft.Specialties();
    const auto isChosen = [&](const auto& one) { return one.name == m_specialty; };
    if (std::none_of(all.begin(), all.end(), isChosen))
        m_specialty = all.empty() ? CString() : all.front().name;
    if (!m_draft.Find(m_category) || SpecialtyOf(m_category) != m_specialty) {
        m_category = UsualCategory();
        m_rules.clear();
        m_current.reset();
    }
    const rules::SmallCategoryPtr category = Category();
    Trim(m_rules, category);
    if (m_rules.empty() && category && !category->rules.empty()) m_rules = {0};
    if (!m_current || !std::binary_search(m_rules.begin(), m_rules.end(), *m_current))
        m_current = m_rules.empty() ? std::nullopt : std::optional(m_rules.front());
    m_elsewhere.erase(m_category);
    for (auto& [text, positions] : m_elsewhere)
        Trim(positions, m_draft.Find(text));
    std::erase_if(m_elsewhere, [](const auto& entry) { return entry.second.empty(); });
}

} // namespace editor
