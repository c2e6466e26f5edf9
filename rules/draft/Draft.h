#pragma once

#include "rules/draft/Edit.h"

#include <map>
#include <set>

namespace rules {

/// The rules of a rule file while somebody edits them. A value that changes by `Edit`s only; every state is
/// made of categories that nothing changes any more, so whoever has taken one may go on reading it, on any
/// thread.
class Draft
{
public:
    /// No rules.
    Draft() = default;
    /// `file` is what the rule file holds. `offered` are the categories that the host has, in its order; of
    /// them those that the file lacks have a default rule without items, and come into the file only when
    /// they are edited. Neither may be null.
    Draft(ConfigurationPtr file, const ConfigurationPtr& offered);

    /// All categories in their present state: those offered, in that order, and behind them, within their
    /// specialty and big category where these are offered, those that only the file has.
    const std::vector<Specialty>& Specialties() const noexcept { return m_specialties; }
    /// The category of that text in its present state; null when there is none.
    SmallCategoryPtr Find(const CString& category) const;
    /// Whether the host offers the category, so that the module's dialogs know it, too.
    bool IsOffered(const CString& category) const;
    /// All of it as one snapshot.
    ConfigurationPtr Snapshot() const;

    /// What the file is to hold: what it holds already, with the categories that are others now.
    Configuration Wanted() const;
    /// What the file held when it was read or last taken over by `Rebase`.
    const ConfigurationPtr& File() const noexcept { return m_file; }
    /// Whether the rules of a category are others than in the file, ids included. One that the file has not
    /// is unchanged as long as it holds nothing but a default rule without items.
    bool IsChanged(const CString& category) const { return m_changed.contains(category); }
    bool IsChanged() const noexcept { return !m_changed.empty(); }
    /// The file holds this now, as after a save. Categories that were changed stay as they are, and are
    /// changed where the file has them otherwise; the others become what the file has, so that nothing which
    /// somebody else has written is taken back by the next save. May not be null.
    void Rebase(ConfigurationPtr file);

    /// Does an edit, or takes it back. Raises `std::logic_error`, with nothing done, when the draft has not
    /// the category, or the rules that are to go are not those that stand there.
    void Apply(const Edit& edit);
    void Revert(const Edit& edit);

    /// An id for a new rule of the category: higher than that of any rule that has been in it since the draft
    /// was made, and than 1, which default rules have. Ids are never given twice, but where the highest one
    /// there is has been given: then they are the lowest that no rule has at present.
    int FreshId(const CString& category) const { return FreshIds(category, 1).front(); }
    /// The same for that many rules.
    std::vector<int> FreshIds(const CString& category, std::size_t count) const;

private:
    struct Place
    {
        std::size_t specialty = 0;
        std::size_t big = 0;
        std::size_t small = 0;
    };
    using Lists = std::map<CString, std::vector<Rule>>;

    SmallCategoryPtr& At(const Place& place);
    const SmallCategoryPtr& At(const Place& place) const;
    void TakeFile(ConfigurationPtr file);
    void AddCategories(const std::vector<Specialty>& specialties);
    void Take(const CString& category, std::vector<Rule> rules);
    void Note(const CString& category, const std::vector<Rule>& rules);
    template <typename Splices>
    void Change(const Splices& splices, std::vector<Rule> Splice::*removed,
                std::vector<Rule> Splice::*inserted);

    ConfigurationPtr m_file = std::make_shared<const Configuration>(std::vector<Specialty>());
    std::vector<Specialty> m_specialties;
    std::map<CString, Place> m_places;           ///< by category text
    std::map<CString, SmallCategoryPtr> m_basis; ///< what each category is as long as nobody changes it
    std::set<CString> m_offered;                 ///< texts
    std::set<CString> m_changed;                 ///< texts
    std::map<CString, int> m_highestIds;         ///< of rules, by category
};

} // namespace rules
