#pragma once

#include "platform/Text.h"

namespace widgets {

/// The order of sorted lists: the collation of Chinese as written in China, numbers by their value. Below,
/// equal, above: negative, 0, positive. The full-width operators ＝, ＜ and ＞ come before ≠, ≤ and ≥.
int Collate(const CString& left, const CString& right);

} // namespace widgets
