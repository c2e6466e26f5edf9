#include "editor/steps/LivelyWindows.h"

#include "editor/EditorFixture.h"
#include "editor/steps/WorkThread.h"
#include "xml/Dom.h"

#include <QtCore/QDeadlineTimer>
#include <QtCore/QSemaphore>
#include <QtCore/QThread>

#include <stdexcept>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr qint64 Large = 64 * 1024 * 1024;

/// Asks to be painted again as often as it is painted, and tells.
class Painted : public QWidget
{
public:
    QSemaphore paints;

protected:
    void paintEvent(QPaintEvent*) override
    {
        paints.release();
        update();
    }
};

} // namespace

TEST(LivelyWindows, WindowIsPaintedWhileAPieceRuns)
{
    const editor::LivelyWindows lively;
    Painted window;
    window.show();
    bool wasPainted = false;
    platform::RunApart(Large, [&] {
        window.paints.acquire(window.paints.available());
        wasPainted = window.paints.tryAcquire(3, 60s);
    });
    EXPECT_TRUE(wasPainted);
}

TEST(LivelyWindows, PieceRunsOnAThreadOfItsOwnAndWhatItRaisesIsRaised)
{
    const editor::LivelyWindows lively;
    const QThread* thread = nullptr;
    const auto piece = [&] {
        thread = QThread::currentThread();
        throw std::runtime_error("no disk");
    };
    EXPECT_THROW(platform::RunApart(Large, piece), std::runtime_error);
    EXPECT_NE(thread, nullptr);
    EXPECT_NE(thread, QThread::currentThread());
}

TEST(LivelyWindows, LargeFileReadsAsWithoutThem)
{
    const QByteArray bytes = "<r>" + QByteArray("<s name='电气' n='1'/>").repeated(400'000) + "</r>";
    const QByteArray broken = bytes.chopped(4);
    const editor::LivelyWindows lively;
    const xml::Document document = xml::Document::Create();
    EXPECT_TRUE(document.LoadBytes(bytes));
    EXPECT_EQ(document.ToBytes(), bytes + '\n');
    EXPECT_FALSE(document.LoadBytes(broken));
    EXPECT_EQ(document.Reason().line, 1);
}

TEST(LivelyWindows, WindowIsPaintedBetweenThePartsOfWorkOnItsThread)
{
    const editor::LivelyWindows lively;
    Painted window;
    window.show();
    const QDeadlineTimer limit(60s);
    while (window.paints.available() < 3 && !limit.hasExpired())
        platform::GiveTurn();
    EXPECT_GE(window.paints.available(), 3);
}

TEST(LivelyWindows, EndWithTheirObject)
{
    {
        const editor::LivelyWindows lively;
    }
    const QThread* thread = nullptr;
    platform::RunApart(Large, [&] { thread = QThread::currentThread(); });
    EXPECT_EQ(thread, QThread::currentThread());
}

// A stack of one byte is more than some systems can give.
TEST(WorkThread, WorkIsDoneWhereTheSystemGivesNoThread)
{
    bool isDone = false;
    editor::WorkThread thread(
        [&] {
            isDone = true;
            throw std::runtime_error("raised");
        },
        1);
    EXPECT_TRUE(thread.Wait(QDeadlineTimer(QDeadlineTimer::Forever)));
    EXPECT_TRUE(thread.HasEnded());
    EXPECT_TRUE(isDone);
    EXPECT_THROW(thread.Raise(), std::runtime_error);
}
