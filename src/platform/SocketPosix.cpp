#include "platform/Socket.h"

#include <sys/socket.h>

#ifdef __linux__
#include <linux/tcp.h>
#include <netinet/in.h>
#endif

void platform::EndConnection(qintptr socket) noexcept
{
    if (socket >= 0) ::shutdown(static_cast<int>(socket), SHUT_RDWR);
}

std::optional<std::uint64_t> platform::BytesThrough(qintptr socket) noexcept
{
#ifdef __linux__
    if (socket < 0) return std::nullopt;
    tcp_info told{};
    socklen_t size = sizeof(told);
    if (::getsockopt(static_cast<int>(socket), IPPROTO_TCP, TCP_INFO, &told, &size) != 0) return std::nullopt;
    return std::uint64_t{told.tcpi_bytes_acked} + told.tcpi_bytes_received;
#else
    static_cast<void>(socket);
    return std::nullopt;
#endif
}
