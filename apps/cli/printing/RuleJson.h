#pragma once

#include "cli/printing/JsonWriter.h"
#include "tree/ConfigNode.h"

#include <vector>

namespace cli {

/// Writes a list of rules as a JSON array in the shape that docs/json.md describes. Names are those of the
/// rule file.
void WriteRules(JsonWriter& json, const std::vector<ConfigNode*>& rules);

} // namespace cli
