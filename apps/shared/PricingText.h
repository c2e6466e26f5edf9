#pragma once

#include "rules/bill/BillBuilder.h"
#include "rules/takeoff/TakeoffReader.h"

/// What pricing gives, in words.
namespace shared {

/// Why a component is refused.
CString RefusalText(rules::Refusal refusal);

/// Why there is no quantity, without a final mark; empty when there is one.
CString FaultText(const rules::Quantity& quantity);

/// A component's quantity in the unit of its item, not rounded; empty when there is none.
CString QuantityIn(const rules::Quantity& quantity, const CString& unit);

/// The rules that were tried in vain, the nearest first: those of which the fewest conditions do not hold, of
/// equal ones those of which more hold, then in the order of the list.
std::vector<const rules::RuleTrace*> NearestFirst(const rules::Trace& trace,
                                                  const rules::SmallCategory& category);

/// What kept a rule from applying: its conditions that do not hold, with the component's values.
CString MissText(const rules::RuleTrace& miss, const rules::SmallCategory& category);

/// All that somebody should look at of a component, a sentence each; empty for one that is priced and has
/// nothing odd. The builder must have priced it.
CStringArray ToldOf(const rules::TakeoffRow& row, const rules::TakeoffComponent& component,
                    const rules::ComponentResult& result, rules::BillBuilder& builder);

} // namespace shared
