#include "rules/draft/Draft.h"

#include "rules/compare/Content.h"
#include "rules/draft/SplicedList.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <stdexcept>
#include <utility>

namespace rules {

namespace {

/// Ids of new rules are higher: it is that of default rules.
constexpr int LowestId = 1;

template <typename Do>
void ForEachSmall(const std::vector<Specialty>& specialties, Do act)
{
    for (const Specialty& specialty : specialties)
        for (const BigCategory& big : specialty.bigCategories)
            for (const SmallCategoryPtr& small : big.smallCategories)
                act(small);
}

/// The category as it is where no file has it.
SmallCategoryPtr WithDefaultAlone(const SmallCategory& category)
{
    auto made = std::make_shared<SmallCategory>();
    made->id = category.id;
    made->name = category.name;
    made->text = category.text;
    made->rules.push_back(BareDefault());
    return made;
}

/// The index of the part of that name, which is made where there is none.
template <typename Part>
std::size_t IndexOf(std::vector<Part>& parts, const Part& like)
{
    for (std::size_t i = 0; i < parts.size(); ++i)
        if (parts[i].name == like.name) return i;
    parts.push_back({like.id, like.name, {}});
    return parts.size() - 1;
}

} // namespace

Draft::Draft(ConfigurationPtr file, const ConfigurationPtr& offered)
{
    ForEachSmall(offered->Specialties(), [&](const SmallCategoryPtr& small) {
        m_offered.insert(small->text);
        m_basis.emplace(small->text, WithDefaultAlone(*small));
    });
    TakeFile(std::move(file));
    AddCategories(offered->Specialties());
    AddCategories(m_file->Specialties());
}

SmallCategoryPtr Draft::Find(const CString& category) const
{
    const auto place = m_places.find(category);
    return place == m_places.end() ? nullptr : At(place->second);
}

bool Draft::IsOffered(const CString& category) const
{
    return m_offered.contains(category);
}

ConfigurationPtr Draft::Snapshot() const
{
    return std::make_shared<const Configuration>(m_specialties);
}

Configuration Draft::Wanted() const
{
    return m_file->With(m_specialties,
                        [this](const SmallCategoryPtr& small) { return m_changed.contains(small->text); });
}

void Draft::Rebase(ConfigurationPtr file)
{
    TakeFile(std::move(file));
    AddCategories(m_file->Specialties());
    for (const auto& [text, place] : m_places) {
        SmallCategoryPtr& state = At(place);
        const SmallCategoryPtr& basis = m_basis.at(text);
        Note(text, basis->rules);
        const bool isSame = state == basis || state->rules == basis->rules;
        // A state that goes on being right stays: somebody may have made much of it.
        if (isSame)
            m_changed.erase(text);
        else if (!m_changed.contains(text))
            state = basis;
    }
}

void Draft::Apply(const Edit& edit)
{
    Change(edit.splices, &Splice::removed, &Splice::inserted);
}

void Draft::Revert(const Edit& edit)
{
    std::vector<std::reference_wrapper<const Splice>> backwards(edit.splices.rbegin(), edit.splices.rend());
    Change(backwards, &Splice::inserted, &Splice::removed);
}

template <typename Splices>
void Draft::Change(const Splices& splices, std::vector<Rule> Splice::*removed,
                   std::vector<Rule> Splice::*inserted)
{
    std::map<CString, SplicedList> lists;
    for (const Splice& splice : splices) {
        auto list = lists.find(splice.category);
        if (list == lists.end()) {
            const SmallCategoryPtr category = Find(splice.category);
            if (!category) throw std::logic_error("the draft has no such category");
            list = lists.emplace(splice.category, SplicedList(category->rules)).first;
        }
        list->second.Replace(splice.position, splice.*removed, splice.*inserted);
    }
    for (const Splice& splice : splices)
        Note(splice.category, splice.*inserted);
    for (auto& [category, list] : lists)
        Take(category, std::move(list).Take());
}

/// The new state of a category.
void Draft::Take(const CString& category, std::vector<Rule> rules)
{
    SmallCategoryPtr& state = At(m_places.at(category));
    const SmallCategoryPtr& basis = m_basis.at(category);
    if (rules == basis->rules) {
        state = basis;
        m_changed.erase(category);
        return;
    }
    auto changed = std::make_shared<SmallCategory>();
    changed->id = state->id;
    changed->name = state->name;
    changed->text = state->text;
    changed->rules = std::move(rules);
    state = std::move(changed);
    m_changed.insert(category);
}

std::vector<int> Draft::FreshIds(const CString& category, std::size_t count) const
{
    const auto highest = m_highestIds.find(category);
    int last = highest == m_highestIds.end() ? LowestId : highest->second;
    std::set<int> used;
    if (last > std::numeric_limits<int>::max() - static_cast<int>(count)) {
        if (const SmallCategoryPtr known = Find(category))
            for (const Rule& rule : known->rules)
                used.insert(rule.id);
        last = LowestId;
    }
    std::vector<int> ids;
    while (ids.size() < count)
        if (!used.contains(++last)) ids.push_back(last);
    return ids;
}

SmallCategoryPtr& Draft::At(const Place& place)
{
    return m_specialties[place.specialty].bigCategories[place.big].smallCategories[place.small];
}

const SmallCategoryPtr& Draft::At(const Place& place) const
{
    return m_specialties[place.specialty].bigCategories[place.big].smallCategories[place.small];
}

/// Remembers what the file holds, and what the categories are that it has no more.
void Draft::TakeFile(ConfigurationPtr file)
{
    m_file = std::move(file);
    std::map<CString, SmallCategoryPtr> held;
    ForEachSmall(m_file->Specialties(),
                 [&](const SmallCategoryPtr& small) { held.emplace(small->text, small); });
    for (auto& [text, basis] : m_basis) {
        if (held.contains(text)) continue;
        SmallCategoryPtr bare = WithDefaultAlone(*basis);
        if (basis->rules != bare->rules) basis = std::move(bare);
    }
    for (const auto& [text, small] : held)
        m_basis.insert_or_assign(text, small);
}

/// Gives each category that is not there yet its place and its basis as its state.
void Draft::AddCategories(const std::vector<Specialty>& specialties)
{
    for (const Specialty& specialty : specialties) {
        Place place;
        place.specialty = IndexOf(m_specialties, specialty);
        for (const BigCategory& big : specialty.bigCategories) {
            std::vector<BigCategory>& bigs = m_specialties[place.specialty].bigCategories;
            place.big = IndexOf(bigs, big);
            std::vector<SmallCategoryPtr>& smalls = bigs[place.big].smallCategories;
            for (const SmallCategoryPtr& small : big.smallCategories) {
                place.small = smalls.size();
                if (!m_places.emplace(small->text, place).second) continue;
                smalls.push_back(m_basis.at(small->text));
                Note(small->text, smalls.back()->rules);
            }
        }
    }
}

/// Remembers ids that have been given.
void Draft::Note(const CString& category, const std::vector<Rule>& rules)
{
    int& highest = m_highestIds.try_emplace(category, LowestId).first->second;
    for (const Rule& rule : rules)
        highest = std::max(highest, rule.id);
}

} // namespace rules
