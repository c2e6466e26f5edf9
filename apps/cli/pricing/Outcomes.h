#pragma once

#include "cli/printing/JsonWriter.h"
#include "rules/bill/BillBuilder.h"

/// What can become of a component, as programs know it and as people read it.
namespace cli {

/// The word by which programs know it: priced, default, refused.
CString OutcomeWord(rules::Outcome outcome);

/// 已套价, 默认规则, 未套价.
CString OutcomeText(rules::Outcome outcome);

/// The totals in one line: components in = priced + on the default rule + refused.
CString TotalsText(const rules::Totals& totals);

/// The totals as members of the object that is being written: all components, then those of each outcome.
void PutTotals(JsonWriter& json, const rules::Totals& totals);

} // namespace cli
