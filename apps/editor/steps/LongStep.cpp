#include "editor/steps/LongStep.h"

#include "editor/steps/ProgressWindow.h"
#include "editor/steps/WorkThread.h"
#include "embedded/data/engine/Progress.h"

#include <QtCore/QTimer>

#include <chrono>

using namespace std::chrono_literals;

namespace editor {

namespace {

/// How often the window looks after the step.
constexpr auto LookInterval = 50ms;

/// Shows the window until the thread has ended. Its end is looked for, not signalled: a signal could come
/// before anybody listens.
void ShowUntilEnd(ProgressWindow& window, const WorkThread& thread)
{
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &window, [&] {
        window.ShowState();
        if (thread.HasEnded()) window.done(QDialog::Accepted);
    });
    timer.start(LookInterval);
    window.exec();
}

} // namespace

bool RunLongStep(QWidget* parent, const QString& text, const LongStep& step)
{
    StepControl control;
    WorkThread thread([&] { step(control); });
    if (!thread.Wait(QDeadlineTimer(QuietTime))) {
        ProgressWindow window(parent, text, control);
        ShowUntilEnd(window, thread);
        thread.Wait(QDeadlineTimer(QDeadlineTimer::Forever));
    }
    try {
        thread.Raise();
        return true;
    } catch (const embedded::Cancelled&) {
        return false;
    }
}

} // namespace editor
