#pragma once

namespace test {

/// An address of this machine, 127.0.0.1 and a free port, where the system takes connections for as long as
/// this lives. Nobody says a word on them unless somebody takes them over. Raises `std::runtime_error`.
class TcpPort
{
public:
    /// `buffer` is how many bytes the system takes from a connection until somebody reads them; 0 for its own
    /// choice.
    explicit TcpPort(int buffer = 0);
    ~TcpPort();
    TcpPort(const TcpPort&) = delete;
    TcpPort& operator=(const TcpPort&) = delete;

    int Number() const noexcept { return m_number; }
    /// Connects to it. The caller closes the socket.
    int Connect() const;
    /// Waits for a connection, and takes it over. The caller closes the socket.
    int Accept() const;
    /// Lets nobody wait in `Accept` any more.
    void End() noexcept;

private:
    int m_socket;
    int m_number = 0;
};

} // namespace test
