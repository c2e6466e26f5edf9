#pragma once

#include "rules/check/Finding.h"
#include "rules/draft/Draft.h"

namespace rules {

/// The edit that does what the mend of a finding proposes; empty when the finding has none, or what it is
/// about is no longer there.
Edit MendEdit(const Draft& draft, const Finding& finding);

} // namespace rules
