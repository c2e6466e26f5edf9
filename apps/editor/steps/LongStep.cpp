#include "editor/steps/LongStep.h"

#include "editor/steps/ProgressWindow.h"
#include "embedded/data/sqlite/Progress.h"

#include <QtCore/QDeadlineTimer>
#include <QtCore/QThread>
#include <QtCore/QTimer>

#include <chrono>
#include <exception>
#include <memory>

using namespace std::chrono_literals;

namespace editor {

namespace {

/// How often the window looks after the step.
constexpr auto LookInterval = 50ms;

/// Shows the window until the thread has ended. Its end is looked for, not signalled: a signal could come
/// before anybody listens.
void ShowUntilEnd(ProgressWindow& window, QThread& thread)
{
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &window, [&] {
        window.ShowState();
        if (thread.isFinished()) window.done(QDialog::Accepted);
    });
    timer.start(LookInterval);
    window.exec();
    thread.wait();
}

} // namespace

bool RunLongStep(QWidget* parent, const QString& text, const LongStep& step)
{
    StepControl control;
    std::exception_ptr raised;
    const std::unique_ptr<QThread> thread(QThread::create([&] {
        try {
            step(control);
        } catch (...) {
            raised = std::current_exception();
        }
    }));
    thread->start();
    if (!thread->wait(QDeadlineTimer(QuietTime))) {
        ProgressWindow window(parent, text, control);
        ShowUntilEnd(window, *thread);
    }
    try {
        if (raised) std::rethrow_exception(raised);
        return true;
    } catch (const embedded::Cancelled&) {
        return false;
    }
}

} // namespace editor
