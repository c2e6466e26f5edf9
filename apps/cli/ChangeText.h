#pragma once

#include "cli/LineDiff.h"

namespace cli {

/// Changes as a person reads them: for each the line and the counts, then the lines that went behind "-" and
/// those that came behind "+", without the blanks that all of them begin with.
CString DescribeChanges(const CArray<LineChange>& changes);

/// The lines of a text file, whatever its encoding. Raise `platform::FileError` when it cannot be read and
/// `Refusal` when it is no text. `name` is what the refusal calls the bytes.
CStringArray LinesOf(const CString& path);
CString TextOf(const QByteArray& bytes, const CString& name);

} // namespace cli
