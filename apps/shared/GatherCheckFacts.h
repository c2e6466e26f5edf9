#pragma once

#include "embedded/data/host/EmbeddedHost.h"
#include "rules/check/CheckFacts.h"

namespace shared {

/// All that the checks of rules go by in the project: mode, libraries in use with what they hold, categories
/// with the attributes that the editor offers, calculation items. The host must be installed.
rules::CheckFacts CheckFactsOf(embedded::EmbeddedHost& host, bool isBillMode);

} // namespace shared
