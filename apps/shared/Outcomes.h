#pragma once

#include "rules/bill/BillBuilder.h"

#include <array>

/// What can become of a component, as programs know it and as people read it.
namespace shared {

/// All of them, in the order in which they are told.
const std::array<rules::Outcome, 3>& AllOutcomes();

/// The word by which programs know it: priced, default, refused.
CString OutcomeWord(rules::Outcome outcome);

/// 已套价, 默认规则, 未套价.
CString OutcomeText(rules::Outcome outcome);

/// How many components came to it.
std::uint64_t CountOf(const rules::Totals& totals, rules::Outcome outcome);

/// The totals in one line: components in = priced + on the default rule + refused.
CString TotalsText(const rules::Totals& totals);

} // namespace shared
