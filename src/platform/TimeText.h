#pragma once

#include "platform/Export.h"
#include "platform/Text.h"

class QDateTime;

/// Moments as a person at this machine reads them, whatever zone they are told in: local time. Empty for a
/// time that is none.
namespace platform {

/// To the second, as for files and copies that were written: "2024-03-05 06:07:08".
KTQDDE_EXPORT CString TimeText(const QDateTime& time);

/// To the minute, where more would be noise.
KTQDDE_EXPORT CString MinuteText(const QDateTime& time);

/// The day alone.
KTQDDE_EXPORT CString DayText(const QDateTime& time);

} // namespace platform
