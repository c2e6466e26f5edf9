#pragma once

#include "platform/Apart.h"

namespace editor {

/// Keeps the windows of the thread that makes it from standing still while something long is read, parsed or
/// written, the module's dialogs included: such a piece is worked on by another thread, and this one paints
/// meanwhile. What the user types and clicks waits until the piece has ended.
class LivelyWindows
{
public:
    LivelyWindows();

private:
    platform::ScopedPieceRunner m_runner;
};

} // namespace editor
