#include "support/sockets/TcpPort.h"

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

#include <stdexcept>

namespace test {

namespace {

constexpr int Backlog = 16;

sockaddr_in Loopback(int port)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<in_port_t>(port));
    return address;
}

void Require(bool isDone, const char* what)
{
    if (!isDone) throw std::runtime_error(what);
}

} // namespace

TcpPort::TcpPort(int buffer) : m_socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
{
    Require(m_socket >= 0, "no socket");
    if (buffer > 0) ::setsockopt(m_socket, SOL_SOCKET, SO_RCVBUF, &buffer, sizeof(buffer));
    sockaddr_in address = Loopback(0);
    auto* const plain = reinterpret_cast<sockaddr*>(&address);
    socklen_t size = sizeof(address);
    const bool listens = ::bind(m_socket, plain, size) == 0 && ::listen(m_socket, Backlog) == 0 &&
                         ::getsockname(m_socket, plain, &size) == 0;
    if (!listens) ::close(m_socket);
    Require(listens, "cannot listen");
    m_number = ntohs(address.sin_port);
}

TcpPort::~TcpPort()
{
    ::close(m_socket);
}

int TcpPort::Connect() const
{
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_in address = Loopback(m_number);
    const bool isConnected =
        ::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0;
    if (!isConnected && socket >= 0) ::close(socket);
    Require(isConnected, "cannot connect");
    return socket;
}

int TcpPort::Accept() const
{
    return ::accept(m_socket, nullptr, nullptr);
}

void TcpPort::End() noexcept
{
    ::shutdown(m_socket, SHUT_RDWR);
}

} // namespace test
