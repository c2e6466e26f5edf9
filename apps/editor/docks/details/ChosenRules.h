#pragma once

#include "editor/session/ProjectFacts.h"
#include "rules/draft/Edit.h"
#include "rules/model/Configuration.h"

#include <functional>
#include <vector>

namespace editor {

class WorkSession;

/// Rules in their present state.
struct RulesInView
{
    rules::SmallCategoryPtr category; ///< null when none is chosen
    std::vector<std::size_t> positions;

    bool IsEmpty() const noexcept { return positions.empty(); }
    bool IsSingle() const noexcept { return positions.size() == 1; }
    const rules::Rule& At(std::size_t i) const { return category->rules[positions[i]]; }
    /// Whether the only one of them is a default rule.
    bool IsDefaultAlone() const { return IsSingle() && At(0).isDefault; }
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

    /// Names the same rules as long as they are these.
    struct Name
    {
        CString category{};
        std::vector<int> ids{};
        auto operator<=>(const Name&) const = default;
    };
    const Name& Named() const noexcept { return m_name; }
    const CString& Category() const noexcept { return m_name.category; }

    WorkSession& Session() const noexcept { return m_session; }
    const ProjectFacts& Facts() const;
    /// What the editor offers for their category.
    const rules::CategoryFacts& Attributes() const;

    /// Does an edit and leaves the choice of the session as it is. Gives how many rules have changed.
    std::size_t Do(const rules::Edit& edit) const;
    /// Changes the only rule; false when there is none any more.
    bool Change(const CString& text, const std::function<void(rules::Rule&)>& change) const;

private:
    WorkSession& m_session;
    Name m_name;
    std::vector<std::size_t> m_positions; ///< where they stood
};

} // namespace editor
