#pragma once

#include "platform/Text.h"

namespace cli {

/// Writes to standard output at once. So that a command does not work on unheard, `NobodyListens` is raised
/// when the reader of a pipe has gone, and `Refusal` when the text cannot be written otherwise.
void WriteText(const CString& text);

} // namespace cli
