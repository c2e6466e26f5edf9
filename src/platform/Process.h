#pragma once

#include "platform/Export.h"

#include <QtCore/qglobal.h>

namespace platform {

/// The most memory that this process has held so far, in bytes; 0 where the platform does not tell.
KTQDDE_EXPORT qint64 PeakMemory();

} // namespace platform
