#pragma once

#include "platform/Export.h"

#include <QtCore/QtGlobal>

#include <functional>

/// Long pieces of work that a program with windows may put on another thread. Without such a program they are
/// plain calls.
namespace platform {

/// Work that touches nothing but what it was given and what nobody else uses meanwhile: no window, no host.
using Piece = std::function<void()>;
/// Runs a piece to its end, on whatever thread, and raises what it raises. It may handle events meanwhile,
/// but no input of the user's: whoever gave the piece is in the middle of something.
using PieceRunner = std::function<void(const Piece&)>;

/// Runs `piece` and returns when it has ended; raises what it raises. `bytes` is what it goes through: only
/// what takes a moment is worth a thread. The piece runs on this thread unless a `ScopedPieceRunner` of this
/// thread says otherwise.
KTQDDE_EXPORT void RunApart(qint64 bytes, const Piece& piece);

/// Whether the runner of this thread is at work: whoever asks comes from an event in the middle of something.
KTQDDE_EXPORT bool IsRunningApart() noexcept;

/// Lets a runner have the long pieces of the thread that makes it, for as long as it lives. A piece that is
/// asked for while another one runs is run at once.
class KTQDDE_EXPORT ScopedPieceRunner
{
public:
    explicit ScopedPieceRunner(PieceRunner runner);
    ~ScopedPieceRunner();
    ScopedPieceRunner(const ScopedPieceRunner&) = delete;
    ScopedPieceRunner& operator=(const ScopedPieceRunner&) = delete;

private:
    PieceRunner m_runner;
    const PieceRunner* m_previous;
};

} // namespace platform
