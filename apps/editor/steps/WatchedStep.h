#pragma once

#include "editor/steps/ProgressWindow.h"
#include "host/Installation.h"

#include <QtCore/QString>

#include <chrono>
#include <functional>

class QWidget;

namespace editor {

/// A step that the module works on the window's thread.
struct WatchedStep
{
    QString text;               ///< what is being done, for the user
    qint64 pieces;              ///< about how many pieces of work it has; see `StepWatch`
    CString draft;              ///< path text of a file of its own; empty when it has none
    std::function<void()> work; ///< raises what it likes
    bool isLong = false;        ///< known beforehand: the window comes with the first piece of work
};

/// Runs a step, and shows a `ProgressWindow` over it when it takes longer than `quiet` or is known to be
/// long. False when the user has cancelled it: no file has changed then but the step's own draft. Whatever
/// else the step raises is raised here. Input reaches that window between two pieces of work; within one it
/// is painted where there are `LivelyWindows`. `roles` are those in force.
bool RunWatched(QWidget* parent, const host::Roles& roles, const WatchedStep& step,
                std::chrono::milliseconds quiet = QuietTime);

} // namespace editor
