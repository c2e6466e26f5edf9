#pragma once

#include "platform/Text.h"

namespace rules {

/// Appends a text as a search sees it: without letter case and the width of letters and digits, and with the
/// signs that keyboards have for ≤, ≥ and ≠ as these.
void AppendFolded(CString& folded, QStringView text);

/// The text so, without blanks around it.
CString Folded(QStringView text);

} // namespace rules
