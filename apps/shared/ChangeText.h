#pragma once

#include "shared/LineDiff.h"

namespace shared {

/// Changes as a person reads them: for each the line and the counts, then the lines that went behind "-" and
/// those that came behind "+", without the blanks that all of them begin with.
CString DescribeChanges(const CArray<LineChange>& changes);

} // namespace shared
