#pragma once

#include "cli/printing/JsonWriter.h"
#include "shared/TakeoffRun.h"

/// What pricing gives as JSON; docs/json.md has the shapes. Quantities are texts, so that no digit is lost.
namespace cli {

/// The bill and what somebody should look at. Reads the table again and raises what `TakeoffPricing`
/// raises.
CString BillJson(rules::TakeoffPricing& pricing, const embedded::Progress& progress);

/// What became of one component, and why. `bill` is that of the component alone.
CString TrialJson(const rules::TakeoffComponent& component, const rules::ComponentResult& result,
                  const rules::Trace& trace, const rules::Bill& bill);

/// The totals as members of the object that is being written: all components, then those of each outcome.
void PutTotals(JsonWriter& json, const rules::Totals& totals);

} // namespace cli
