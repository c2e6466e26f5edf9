#pragma once

#include "rules/match/CategoryMatcher.h"

#include <span>
#include <vector>

/// Why a rule applies and the others do not. Made for one component, when somebody asks.
namespace rules {

/// How a condition came to hold or not.
enum class Reason {
    // ＝ and ≠: how cell and value compare
    Same,           ///< the same text
    SameNumber,     ///< two texts of one number, such as 50 and 50.0
    SameNormalised, ///< the same after compatibility normalisation, such as ６５ and 65
    Different,      ///< neither
    // ranges
    WithinBounds, ///< also where there is no bound
    OutsideLower, ///< the first bound does not hold
    OutsideUpper, ///< the first bound holds, the second does not
    NotANumber,   ///< the cell is none
    // what lets no condition hold, ≠ included
    NoAttribute,     ///< the condition names no attribute
    UnknownOperator, ///< at its place
    BoundNotANumber,
    AttributeMissing, ///< the take-off table has no column for it
    CellEmpty,
};

/// What became of one condition.
struct Verdict
{
    bool holds = false;
    Reason reason = Reason::Different;
};

/// One condition and one cell. `numbers` is that of the attribute.
KTQDDE_RULES_EXPORT Verdict Judge(const Condition& condition, const NumberReader& numbers, const Cell& cell);

/// The verdict as a sentence for people, without a final mark: "材质＝镀锌钢管：构件的值是“PPR管”".
KTQDDE_RULES_EXPORT CString Describe(const Condition& condition, const Verdict& verdict, const Cell& cell);

/// One rule and the component.
struct RuleTrace
{
    RuleIndex rule = NoRule;
    std::vector<Verdict> verdicts; ///< of every condition, in order
    std::vector<Cell> cells;       ///< beside them, the component's cell for the condition's attribute
    int failed = -1;               ///< the first condition that does not hold; -1 when all hold
    int holding = 0;               ///< how many hold: the more, the nearer was the rule
};

struct Trace
{
    RuleIndex applies = NoRule;
    std::vector<RuleTrace> before; ///< every rule that was tried in vain before the one that applies
    RuleTrace applied; ///< of the rule that applies by its conditions; its rule is `NoRule` otherwise
};

/// The whole story of a component, given its cell for each of `CategoryMatcher::Attributes()`. Reads the
/// rules themselves and not what was compiled; `applies` is always what `CategoryMatcher::Match` gives.
KTQDDE_RULES_EXPORT Trace Explain(const CategoryMatcher& matcher, std::span<const Cell> cells);

/// The part of one rule in it, whether it was tried or stands behind the one that applies. The rule must be
/// one of the category's.
KTQDDE_RULES_EXPORT RuleTrace ExplainRule(const CategoryMatcher& matcher, std::span<const Cell> cells,
                                          RuleIndex rule);

} // namespace rules
