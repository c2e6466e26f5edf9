#include "embedded/data/engine/SilenceWatch.h"

#include "support/Patience.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>

using namespace Qt::StringLiterals;
using embedded::SilenceWatch;

namespace {

/// A connection that somebody waits for, as the watch sees it, to a server that answers nobody.
class Connection
{
public:
    /// Each look finds so many bytes more, and so many get through while the watch asks for the server.
    explicit Connection(unsigned bytesEachLook, unsigned bytesEachQuestion = 0)
        : m_bytesEachLook(bytesEachLook), m_bytesEachQuestion(bytesEachQuestion)
    {
    }

    int Looks() const { return m_seen->looks; }
    int Questions() const { return m_seen->questions; }
    int Ends() const { return m_seen->ends; }

private:
    /// The watch may still ask when it has ended.
    struct Seen
    {
        std::atomic<unsigned> bytes = 0;
        std::atomic<int> looks = 0;
        std::atomic<int> questions = 0;
        std::atomic<int> ends = 0;
    };

    const unsigned m_bytesEachLook;
    const unsigned m_bytesEachQuestion;
    const std::shared_ptr<Seen> m_seen = std::make_shared<Seen>();
    SilenceWatch m_watch{{[seen = m_seen, each = m_bytesEachQuestion] {
                              seen->bytes += each;
                              ++seen->questions;
                              return false;
                          },
                          [seen = m_seen, each = m_bytesEachLook] {
                              const unsigned bytes = seen->bytes += each;
                              ++seen->looks;
                              return std::optional<std::uint64_t>(bytes);
                          },
                          [seen = m_seen] { ++seen->ends; }}};
    SilenceWatch::Wait m_wait{&m_watch};
};

} // namespace

// The look comes every second, and a wait is long after four; on a machine that stands still for as long the
// server is asked for all the same.
TEST(SilenceWatch, WaitInWhichBytesGetThroughIsNoSilence)
{
    const Connection connection(1);
    test::WaitFor(u"looks at the connection"_s, [&] { return connection.Looks() >= 9; });
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
    const Connection connection(0, 1);
    test::WaitFor(u"questions"_s, [&] { return connection.Questions() >= 2; });
    EXPECT_EQ(connection.Ends(), 0);
}
