#pragma once

#include "rules/check/Finding.h"

namespace editor {

/// What a code means, for a cost engineer: one or two sentences with their final marks.
CString ExplanationOf(rules::FindingCode code);

} // namespace editor
