#include "editor/steps/LivelyWindows.h"

#include "editor/steps/WorkThread.h"

#include <QtCore/QCoreApplication>

#include <chrono>

using namespace std::chrono_literals;

namespace editor {

namespace {

/// How often the windows get their turn.
constexpr auto Turn = 20ms;

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
    m_sincePainted.start();
}

void LivelyWindows::PaintWhenDue()
{
    if (!m_sincePainted.hasExpired(Turn.count())) return;
    Paint();
    m_sincePainted.start();
}

} // namespace editor
