#include "support/sockets/SlowLine.h"

#include <QtCore/QFile>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstring>

namespace test {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int Buffer = 64 * 1024;

/// Below 0 when nobody is there.
int ConnectLocally(const QByteArray& path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path.constData(), sizeof(address.sun_path) - 1);
    const int server = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (::connect(server, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0) return server;
    ::close(server);
    return -1;
}

/// Lets through what is there, up to `most` bytes. False at the end of either side.
bool Pass(int from, int to, std::size_t most)
{
    std::array<char, SlowLine::BytesEachStep> bytes;
    const auto count = ::recv(from, bytes.data(), std::min(most, bytes.size()), MSG_DONTWAIT);
    if (count < 0) return true; // nothing now
    return count > 0 && ::send(to, bytes.data(), static_cast<std::size_t>(count), MSG_NOSIGNAL) == count;
}

} // namespace

SlowLine::SlowLine(const QString& socket)
    : m_port(Buffer), m_socket(QFile::encodeName(socket)), m_thread([this] { Run(); })
{
}

SlowLine::~SlowLine()
{
    m_isEnding = true;
    m_port.End();
    m_thread.join();
}

void SlowLine::Run()
{
    const int client = m_port.Accept();
    if (client < 0) return;
    const int server = ConnectLocally(m_socket);
    if (server >= 0) {
        Carry(client, server);
        ::close(server);
    }
    ::close(client);
}

void SlowLine::Carry(int client, int server)
{
    Clock::time_point due = Clock::now();
    while (!m_isEnding) {
        if (Clock::now() >= due) {
            if (!Pass(client, server, BytesEachStep)) return;
            due = Clock::now() + Step;
        }
        // What comes back is not held up.
        pollfd answers{server, POLLIN, 0};
        constexpr int Moment = 10;
        if (::poll(&answers, 1, Moment) > 0 && !Pass(server, client, BytesEachStep)) return;
    }
}

} // namespace test
