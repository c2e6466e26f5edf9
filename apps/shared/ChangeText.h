#pragma once

#include "shared/LineDiff.h"

namespace shared {

/// Changes as a person reads them: for each the line and the counts, then the lines that went behind "-" and
/// those that came behind "+", without the indent that all of them have. A tab of an indent is told as two
/// blanks.
CString DescribeChanges(const CArray<LineChange>& given);

} // namespace shared
