#pragma once

#include "editor/steps/StepControl.h"

#include <QtCore/QString>

#include <functional>

class QWidget;

namespace editor {

using LongStep = std::function<void(StepControl&)>;

/// Runs `step` on a thread of its own and returns when it has ended. A step that takes a moment longer shows
/// a `ProgressWindow` with `text`. False when the step ended by `embedded::Cancelled`; whatever else it
/// raised is raised here. The step must not touch the installed host or any widget: both belong to the
/// window's thread.
bool RunLongStep(QWidget* parent, const QString& text, const LongStep& step);

} // namespace editor
