#pragma once

#include "platform/Apart.h"

#include <QtCore/QElapsedTimer>

namespace editor {

/// Keeps the windows of the thread that makes it from standing still while something long is read, parsed or
/// written, the module's dialogs included: what can be is worked on by another thread, and this one paints
/// meanwhile; what cannot be is interrupted to paint. What the user types and clicks waits until the work has
/// ended.
class LivelyWindows
{
public:
    LivelyWindows();

private:
    void PaintWhenDue();

    QElapsedTimer m_sinceAsked; ///< for a turn
    QElapsedTimer m_sincePainted;
    platform::ScopedPieceRunner m_runner;
};

} // namespace editor
