#pragma once

#include "platform/Export.h"

#include <QtCore/QtGlobal>

#include <functional>

/// How long work lets a program with windows keep them alive. Without such a program all of this is plain
/// calls.
namespace platform {

/// Work that touches nothing but what it was given and what nobody else uses meanwhile: no window, no host.
using Piece = std::function<void()>;
/// Runs a piece to its end, on whatever thread, and raises what it raises.
using PieceRunner = std::function<void(const Piece&)>;
/// Lets the windows have their turn, if they are due for one.
using Turn = std::function<void()>;

/// Runs `piece` and returns when it has ended; raises what it raises. `bytes` is what it goes through: only
/// what takes a moment is worth a thread. The piece runs on this thread unless a `ScopedPieceRunner` of this
/// thread says otherwise.
KTQDDE_EXPORT void RunApart(qint64 bytes, const Piece& piece);

/// To be called between the parts of long work that must stay on this thread. Costs next to nothing.
KTQDDE_EXPORT void GiveTurn();

/// Whether this thread is in one of the two: whoever asks comes from an event in the middle of something.
KTQDDE_EXPORT bool IsInLongWork() noexcept;

/// Lets a runner have the long pieces of the thread that makes it, and gives turns, for as long as it lives.
/// Both may handle events, but no input of the user's: their caller is in the middle of something. What asks
/// for either from such an event gets a plain call.
class KTQDDE_EXPORT ScopedPieceRunner
{
public:
    explicit ScopedPieceRunner(PieceRunner runner, Turn turn = {});
    ~ScopedPieceRunner();
    ScopedPieceRunner(const ScopedPieceRunner&) = delete;
    ScopedPieceRunner& operator=(const ScopedPieceRunner&) = delete;

    const PieceRunner& Runner() const noexcept { return m_runner; }
    const Turn& GivenTurn() const noexcept { return m_turn; }

private:
    PieceRunner m_runner;
    Turn m_turn;
    const ScopedPieceRunner* m_previous;
};

} // namespace platform
