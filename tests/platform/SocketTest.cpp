#include "platform/Socket.h"

#include "support/Patience.h"
#include "support/sockets/TcpPort.h"

#include <gtest/gtest.h>

#include <sys/socket.h>
#include <unistd.h>

#include <array>

using namespace Qt::StringLiterals;

namespace {

/// Both ends of a connection by TCP.
class Connection
{
public:
    Connection() : m_near(m_port.Connect()), m_far(m_port.Accept()) {}
    ~Connection()
    {
        ::close(m_near);
        ::close(m_far);
    }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    int Near() const { return m_near; }
    int Far() const { return m_far; }

private:
    test::TcpPort m_port;
    int m_near;
    int m_far;
};

constexpr std::array<char, 1000> Bytes{};

} // namespace

TEST(Socket, BytesThroughAreThoseOfBothDirections)
{
    const Connection connection;
    const auto through = [&] { return platform::BytesThrough(connection.Near()).value(); };
    const std::uint64_t before = through();
    ASSERT_EQ(::send(connection.Near(), Bytes.data(), 1000, 0), 1000);
    test::WaitFor(u"what was sent"_s, [&] { return through() == before + 1000; });
    ASSERT_EQ(::send(connection.Far(), Bytes.data(), 10, 0), 10);
    test::WaitFor(u"what has come"_s, [&] { return through() == before + 1010; });
}

TEST(Socket, BytesThroughAreNotKnownOfWhatIsNoConnectionByTcp)
{
    EXPECT_EQ(platform::BytesThrough(-1), std::nullopt);
    std::array<int, 2> pair{};
    ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM, 0, pair.data()), 0);
    EXPECT_EQ(platform::BytesThrough(pair[0]), std::nullopt);
    ::close(pair[0]);
    ::close(pair[1]);
}

TEST(Socket, EndedConnectionIsToldToBothEnds)
{
    const Connection connection;
    platform::EndConnection(connection.Near());
    std::array<char, 1> byte{};
    EXPECT_EQ(::recv(connection.Near(), byte.data(), 1, 0), 0);
    EXPECT_EQ(::recv(connection.Far(), byte.data(), 1, 0), 0);
    EXPECT_NO_THROW(platform::EndConnection(-1));
}
