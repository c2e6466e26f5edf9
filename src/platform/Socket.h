#pragma once

#include "platform/Export.h"

#include <QtCore/QtGlobal>

namespace platform {

/// Ends both directions of a connection by the number that the system gives to its socket: whoever waits on
/// it, in whatever thread, is told that the connection has ended. The socket stays its owner's, who closes
/// it. Nothing for a number below 0 and for what is no socket.
KTQDDE_EXPORT void EndConnection(qintptr socket) noexcept;

} // namespace platform
