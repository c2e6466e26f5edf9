#include "platform/Socket.h"

#include <sys/socket.h>

void platform::EndConnection(qintptr socket) noexcept
{
    if (socket >= 0) ::shutdown(static_cast<int>(socket), SHUT_RDWR);
}
