#pragma once

#include "cli/printing/JsonWriter.h"
#include "rules/compare/Comparison.h"

namespace cli {

/// Writes the keys of a comparison into the object that is open: the counts and the categories with their
/// rules.
void WriteComparison(JsonWriter& json, const rules::Comparison& comparison);

} // namespace cli
