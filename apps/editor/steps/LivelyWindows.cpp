#include "editor/steps/LivelyWindows.h"

#include "editor/steps/WorkThread.h"

#include <QtCore/QCoreApplication>

#include <chrono>

using namespace std::chrono_literals;

namespace editor {

namespace {

/// How often the windows get their turn.
constexpr auto Turn = 20ms;

void PaintUntilEnd(const platform::Piece& piece)
{
    WorkThread thread(piece);
    while (!thread.Wait(QDeadlineTimer(Turn)))
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents |
                                        QEventLoop::ExcludeSocketNotifiers);
    thread.Raise();
}

} // namespace

LivelyWindows::LivelyWindows() : m_runner(&PaintUntilEnd) {}

} // namespace editor
