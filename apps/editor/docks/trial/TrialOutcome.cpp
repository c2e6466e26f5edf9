#include "editor/docks/trial/TrialOutcome.h"

#include "rules/match/Trace.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

TrialOutcome::TrialOutcome(std::shared_ptr<const rules::CategoryMatcher> matcher,
                           std::vector<rules::Cell> cells)
    : m_matcher(std::move(matcher)), m_cells(std::move(cells))
{
    const rules::RuleIndex rule = m_matcher->Match(m_cells);
    if (rule != rules::NoRule) m_applies = static_cast<std::size_t>(rule);
}

TrialOutcome::Standing TrialOutcome::StandingOf(std::size_t rule) const
{
    if (rule == m_applies) return Standing::Applies;
    if (Category()->rules[rule].isDefault) return Standing::Overtaken;
    const auto trace = rules::ExplainRule(*m_matcher, m_cells, static_cast<rules::RuleIndex>(rule));
    return trace.failed < 0 ? Standing::Overtaken : Standing::Fails;
}

CString TrialOutcome::ReasonOf(std::size_t rule) const
{
    const rules::Rule& asked = Category()->rules[rule];
    if (rule == m_applies) {
        if (asked.isDefault) return u"适用：别的规则都不适用"_s;
        return asked.conditions.empty() ? u"适用：没有条件"_s : u"适用：条件都满足"_s;
    }
    const rules::RuleTrace trace =
        rules::ExplainRule(*m_matcher, m_cells, static_cast<rules::RuleIndex>(rule));
    if (!asked.isDefault && trace.failed >= 0) {
        const auto failed = static_cast<std::size_t>(trace.failed);
        return u"不适用："_s +
               rules::Describe(asked.conditions[failed], trace.verdicts[failed], trace.cells[failed]);
    }
    const CString taken = m_applies ? u"第 %1 条已经适用"_s.arg(*m_applies + 1) : u"没有规则适用"_s;
    return asked.isDefault ? u"轮不到："_s + taken : u"条件都满足，但"_s + taken;
}

} // namespace editor
