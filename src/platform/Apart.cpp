#include "platform/Apart.h"

#include <QtCore/QScopedValueRollback>

#include <utility>

namespace platform {

namespace {

/// Below this the slowest machine is done in less than the blink of a screen.
constexpr qint64 LongPiece = 4 * 1024 * 1024;

struct ThisThread
{
    const ScopedPieceRunner* inForce = nullptr;
    bool isInLongWork = false;
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
    if (bytes < LongPiece || state.inForce == nullptr || state.isInLongWork) return piece();
    const QScopedValueRollback<bool> inLongWork(state.isInLongWork, true);
    state.inForce->Runner()(piece);
}

void GiveTurn()
{
    ThisThread& state = State();
    if (state.inForce == nullptr || state.isInLongWork || !state.inForce->GivenTurn()) return;
    const QScopedValueRollback<bool> inLongWork(state.isInLongWork, true);
    state.inForce->GivenTurn()();
}

bool IsInLongWork() noexcept
{
    return State().isInLongWork;
}

ScopedPieceRunner::ScopedPieceRunner(PieceRunner runner, Turn turn)
    : m_runner(std::move(runner)), m_turn(std::move(turn)), m_previous(std::exchange(State().inForce, this))
{
}

ScopedPieceRunner::~ScopedPieceRunner()
{
    State().inForce = m_previous;
}

} // namespace platform
