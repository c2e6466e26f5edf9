#include "embedded/data/engine/SilenceWatch.h"

#include "support/Patience.h"

#include <gtest/gtest.h>

#include <atomic>

using namespace Qt::StringLiterals;
using embedded::SilenceWatch;

namespace {

/// A connection that somebody waits for, as the watch sees it, to a server that answers nobody.
class Connection
{
public:
    /// Each look finds so many bytes more.
    explicit Connection(unsigned bytesEachLook) : m_bytesEachLook(bytesEachLook) {}

    int Looks() const { return m_looks; }
    int Questions() const { return m_questions; }
    int Ends() const { return m_ends; }
    /// So many bytes get through while the watch asks for the server.
    void MoveWhileAsked(unsigned bytes) { m_bytesEachQuestion = bytes; }

private:
    const unsigned m_bytesEachLook;
    std::atomic<unsigned> m_bytesEachQuestion = 0;
    std::atomic<unsigned> m_bytes = 0;
    std::atomic<int> m_looks = 0;
    std::atomic<int> m_questions = 0;
    std::atomic<int> m_ends = 0;
    SilenceWatch m_watch{{[this] {
                              ++m_questions;
                              m_bytes += m_bytesEachQuestion;
                              return false;
                          },
                          [this] {
                              ++m_looks;
                              return std::optional<std::uint64_t>(m_bytes += m_bytesEachLook);
                          },
                          [this] { ++m_ends; }}};
    SilenceWatch::Wait m_wait{&m_watch};
};

} // namespace

// The look comes every second, and a wait is long after four.
TEST(SilenceWatch, WaitInWhichBytesGetThroughIsNoSilence)
{
    const Connection connection(1);
    test::WaitFor(u"looks at the connection"_s, [&] { return connection.Looks() >= 9; });
    EXPECT_EQ(connection.Questions(), 0);
    EXPECT_EQ(connection.Ends(), 0);
}

TEST(SilenceWatch, WaitInWhichNothingGetsThroughEndsWhenTheServerAnswersNobody)
{
    const Connection connection(0);
    test::WaitFor(u"the end of the wait"_s, [&] { return connection.Ends() > 0; });
    EXPECT_GT(connection.Questions(), 0);
}

TEST(SilenceWatch, WhatGetsThroughWhileTheServerIsAskedForCounts)
{
    Connection connection(0);
    connection.MoveWhileAsked(1);
    test::WaitFor(u"questions"_s, [&] { return connection.Questions() >= 2; });
    EXPECT_EQ(connection.Ends(), 0);
}
