#pragma once

#include "editor/session/ProjectFacts.h"
#include "rules/draft/RuleEdits.h"

#include <functional>
#include <map>
#include <vector>

namespace editor {

class WorkSession;

/// Rules in their present state. It keeps them alive, so it may be asked after they have been edited.
class RulesInView
{
public:
    struct Entry
    {
        rules::SmallCategoryPtr category; ///< not null
        std::size_t position;
    };

    explicit RulesInView(std::vector<Entry> entries) : m_entries(std::move(entries)) {}

    bool IsEmpty() const noexcept { return m_entries.empty(); }
    bool IsSingle() const noexcept { return m_entries.size() == 1; }
    std::size_t Count() const noexcept { return m_entries.size(); }
    const Entry& Place(std::size_t i) const { return m_entries[i]; }
    const rules::Rule& At(std::size_t i) const { return m_entries[i].category->rules[m_entries[i].position]; }
    /// Whether the only one of them is a default rule.
    bool IsDefaultAlone() const { return IsSingle() && At(0).isDefault; }
    rules::RulePlaces Places() const;

private:
    std::vector<Entry> m_entries;
};

/// Which rules a view of the session shows: those that were chosen when it looked last, so that what was
/// being typed still reaches the rule that it was typed for. It knows them by their ids and holds nothing of
/// what they say. The session must outlive this.
class ChosenRules
{
public:
    explicit ChosenRules(WorkSession& session) : m_session(session) {}

    /// Turns to what is chosen in the session.
    void Follow();
    /// The rules as they are now; those that are gone are left out.
    RulesInView Look() const;

    /// Names the same rules as long as they are these: ids by category.
    using Name = std::map<CString, std::vector<int>>;
    const Name& Named() const noexcept { return m_name; }
    /// How many they were.
    std::size_t Count() const noexcept;
    /// The text of the category that was chosen; rules of others may have been chosen, too.
    const CString& Category() const noexcept { return m_category; }

    WorkSession& Session() const noexcept { return m_session; }
    const ProjectFacts& Facts() const;
    /// What the editor offers for their category; for rules of several categories what all of these have.
    const rules::CategoryFacts& Attributes() const noexcept { return m_attributes; }

    /// Does an edit and leaves the choice of the session as it is. Gives how many rules have changed.
    std::size_t Do(const rules::Edit& edit) const;
    /// Changes the only rule; false when there is none any more.
    bool Change(const CString& text, const std::function<void(rules::Rule&)>& change) const;

private:
    WorkSession& m_session;
    CString m_category;
    Name m_name;
    rules::RulePlaces m_places; ///< where they stood
    rules::CategoryFacts m_attributes;
};

} // namespace editor
