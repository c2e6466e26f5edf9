#include "platform/Socket.h"

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <winsock2.h>

void platform::EndConnection(qintptr socket) noexcept
{
    if (socket >= 0) ::shutdown(static_cast<SOCKET>(socket), SD_BOTH);
}
