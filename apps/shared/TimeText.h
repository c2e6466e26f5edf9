#pragma once

#include "platform/Text.h"

class QDateTime;

namespace shared {

/// The moment at which a file or a copy was written, as a person at this machine reads it: local time, to the
/// second.
CString TimeText(const QDateTime& time);

} // namespace shared
