#pragma once

#include "support/sockets/TcpPort.h"

#include <QtCore/QString>

#include <atomic>
#include <chrono>
#include <thread>

namespace test {

/// A way by TCP to a server's local socket that lets little through at a time from its client, and all at
/// once to it. It carries the first connection alone: others wait behind what is on its way, without a word.
class SlowLine
{
public:
    /// How much comes through at a time, and how long it is to the next piece.
    static constexpr int BytesEachStep = 32 * 1024;
    static constexpr std::chrono::milliseconds Step{250};

    /// `socket` is the native path of the local socket.
    explicit SlowLine(const QString& socket);
    ~SlowLine();
    SlowLine(const SlowLine&) = delete;
    SlowLine& operator=(const SlowLine&) = delete;

    int Port() const noexcept { return m_port.Number(); }

private:
    void Run();
    void Carry(int client, int server);

    TcpPort m_port;
    QByteArray m_socket;
    std::atomic<bool> m_isEnding = false;
    std::thread m_thread;
};

} // namespace test
