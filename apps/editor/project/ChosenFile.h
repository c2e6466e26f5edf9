#pragma once

#include "platform/Text.h"

namespace editor {

/// The path text of a file that the user chose; empty stays empty. Raises `std::runtime_error` for a name
/// that has none (one that holds a backslash).
CString PathTextOf(const QString& nativePath);

} // namespace editor
