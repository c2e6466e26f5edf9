#include "platform/Apart.h"

#include <QtCore/QScopedValueRollback>

#include <utility>

namespace platform {

namespace {

/// Below this the slowest machine is done in less than the blink of a screen.
constexpr qint64 LongPiece = 4 * 1024 * 1024;

struct ThisThread
{
    const PieceRunner* runner = nullptr;
    bool isRunning = false;
};

ThisThread& State() noexcept
{
    thread_local ThisThread state;
    return state;
}

} // namespace

void RunApart(qint64 bytes, const Piece& piece)
{
    ThisThread& state = State();
    if (bytes < LongPiece || state.runner == nullptr || state.isRunning) return piece();
    const QScopedValueRollback<bool> running(state.isRunning, true);
    (*state.runner)(piece);
}

bool IsRunningApart() noexcept
{
    return State().isRunning;
}

ScopedPieceRunner::ScopedPieceRunner(PieceRunner runner)
    : m_runner(std::move(runner)), m_previous(std::exchange(State().runner, &m_runner))
{
}

ScopedPieceRunner::~ScopedPieceRunner()
{
    State().runner = m_previous;
}

} // namespace platform
