#include "editor/steps/LivelyWindows.h"

#include "editor/steps/WorkThread.h"

#include <QtCore/QCoreApplication>

#include <chrono>

using namespace std::chrono_literals;

namespace editor {

namespace {

/// How often the windows get their turn.
constexpr auto Turn = 20ms;
/// Who has not asked for a turn for so long has come back from the event loop.
constexpr auto Pause = 100ms;

void Paint()
{
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::ExcludeSocketNotifiers);
}

void PaintUntilEnd(const platform::Piece& piece)
{
    WorkThread thread(piece);
    while (!thread.Wait(QDeadlineTimer(Turn)))
        Paint();
    thread.Raise();
}

} // namespace

LivelyWindows::LivelyWindows() : m_runner(&PaintUntilEnd, [this] { PaintWhenDue(); })
{
    m_sinceAsked.start();
    m_sincePainted.start();
}

void LivelyWindows::PaintWhenDue()
{
    const bool isNewWork = m_sinceAsked.hasExpired(Pause.count());
    m_sinceAsked.start();
    if (isNewWork) m_sincePainted.start();
    if (!m_sincePainted.hasExpired(Turn.count())) return;
    Paint();
    m_sincePainted.start();
}

} // namespace editor
