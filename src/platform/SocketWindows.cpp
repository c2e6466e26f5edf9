#include "platform/Socket.h"

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <winsock2.h>

#include <mstcpip.h>

void platform::EndConnection(qintptr socket) noexcept
{
    if (socket >= 0) ::shutdown(static_cast<SOCKET>(socket), SD_BOTH);
}

std::optional<std::uint64_t> platform::BytesThrough(qintptr socket) noexcept
{
#ifdef SIO_TCP_INFO
    if (socket < 0) return std::nullopt;
    DWORD version = 0;
    TCP_INFO_v0 told{};
    DWORD size = 0;
    if (::WSAIoctl(static_cast<SOCKET>(socket), SIO_TCP_INFO, &version, sizeof(version), &told, sizeof(told),
                   &size, nullptr, nullptr) != 0)
        return std::nullopt;
    return std::uint64_t{told.BytesOut} - told.BytesInFlight + told.BytesIn;
#else
    static_cast<void>(socket); // the kit knows older systems alone
    return std::nullopt;
#endif
}
