#pragma once

#include "rules/match/CategoryMatcher.h"

#include <memory>
#include <optional>
#include <vector>

namespace editor {

/// What the rules of a category say to one component: which one applies, and of every other why it does not.
/// Worked out for a rule when somebody asks, so that a list of thousands costs nothing before it is seen.
class TrialOutcome
{
public:
    /// How a rule stands to the component.
    enum class Standing {
        Applies,
        Fails,    ///< a condition does not hold
        Overtaken ///< all hold, or it is the default rule; but one before it applies
    };

    /// `cells` stand beside the matcher's attributes.
    TrialOutcome(std::shared_ptr<const rules::CategoryMatcher> matcher, std::vector<rules::Cell> cells);

    /// The state of the category that this is about.
    const rules::SmallCategoryPtr& Category() const { return m_matcher->CategoryPtr(); }
    /// The index of the rule that applies; nothing when none does.
    std::optional<std::size_t> Applies() const noexcept { return m_applies; }
    /// Of a rule of that category, by its index.
    Standing StandingOf(std::size_t rule) const;
    /// Why it applies or does not, as a sentence without a final mark.
    CString ReasonOf(std::size_t rule) const;

private:
    std::shared_ptr<const rules::CategoryMatcher> m_matcher;
    std::vector<rules::Cell> m_cells;
    std::optional<std::size_t> m_applies;
};
using TrialOutcomePtr = std::shared_ptr<const TrialOutcome>;

} // namespace editor
