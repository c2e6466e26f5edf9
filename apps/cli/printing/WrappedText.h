#pragma once

#include "platform/Text.h"
#include "store/WrappedFile.h"

namespace cli {

/// The fields of a wrapped file, one a line.
CString DescribeWrapped(const store::WrappedFile& file);

/// Reads a wrapped file. Raises `Refusal`, saying why, when it cannot be read or is none.
store::WrappedFile ReadWrapped(const CString& path);

} // namespace cli
