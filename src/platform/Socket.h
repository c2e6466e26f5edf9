#pragma once

#include "platform/Export.h"

#include <QtCore/QtGlobal>

#include <cstdint>
#include <optional>

namespace platform {

/// Ends both directions of a connection by the number that the system gives to its socket: whoever waits on
/// it, in whatever thread, is told that the connection has ended. The socket stays its owner's, who closes
/// it. Nothing for a number below 0 and for what is no socket.
KTQDDE_EXPORT void EndConnection(qintptr socket) noexcept;

/// How many bytes have got through a connection so far: those that the other end's system has taken, and
/// those that have come from it. Nothing where the system does not tell, such as for a connection within the
/// machine.
KTQDDE_EXPORT std::optional<std::uint64_t> BytesThrough(qintptr socket) noexcept;

} // namespace platform
