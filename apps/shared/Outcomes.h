#pragma once

#include "rules/bill/BillBuilder.h"

#include <array>

/// What can become of a component, as programs know it and as people read it.
namespace shared {

/// The word by which programs know it: priced, default, refused.
CString OutcomeWord(rules::Outcome outcome);

/// 已套价, 默认规则, 未套价.
CString OutcomeText(rules::Outcome outcome);

/// The totals in one line: components in = priced + on the default rule + refused.
CString TotalsText(const rules::Totals& totals);

/// How many components came to an outcome, given the word of that.
struct OutcomeCount
{
    CString word;
    std::uint64_t count = 0;
};
/// Those of all outcomes, in one order.
std::array<OutcomeCount, 3> CountsOf(const rules::Totals& totals);

} // namespace shared
