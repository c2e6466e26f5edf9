#pragma once

#include "platform/Text.h"

namespace cli {

/// Writes to standard output at once; raises `Refusal` when nobody takes it any more, so that a command does
/// not work on unheard.
void WriteText(const CString& text);

} // namespace cli
