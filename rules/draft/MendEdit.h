#pragma once

#include "rules/check/Finding.h"
#include "rules/draft/Draft.h"

namespace rules {

/// The edit that does what the mend of a finding proposes; empty when the finding has none, or what it is
/// about is no longer there. The finding must be one of the category as the draft has it: a mend brings whole
/// conditions and records, and would take back what was changed in them since.
///
/// A category without a default rule is mended by saving it; a draft has the rule already, and there is
/// nothing to edit.
Edit MendEdit(const Draft& draft, const Finding& finding);

} // namespace rules
