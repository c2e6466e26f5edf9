#include "editor/WatchedStep.h"

#include "editor/StepWatch.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QGuiApplication>

#include <optional>

using namespace std::chrono_literals;

namespace editor {

namespace {

/// Shows that the window is busy.
class BusyCursor
{
public:
    BusyCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~BusyCursor() { QGuiApplication::restoreOverrideCursor(); }
    BusyCursor(const BusyCursor&) = delete;
    BusyCursor& operator=(const BusyCursor&) = delete;
};

/// What the user sees of a step: a busy cursor first, then the window.
class Display
{
public:
    Display(QWidget* parent, const WatchedStep& step, std::chrono::milliseconds quiet)
        : m_step(step), m_quiet(step.isLong ? 0ms : quiet), m_window(parent, step.text, m_control)
    {
        m_busy.emplace();
    }

    /// Raises `embedded::Cancelled`.
    void Look(bool mayStop)
    {
        m_control.Report(m_done++, m_step.pieces);
        if (!mayStop) m_control.Commit();
        if (m_busy && std::chrono::steady_clock::now() - m_start < m_quiet) return;
        m_busy.reset();
        m_window.ShowState();
        m_window.show();
        QCoreApplication::processEvents();
        m_control.Check();
    }

private:
    const WatchedStep& m_step;
    std::chrono::milliseconds m_quiet;
    StepControl m_control;
    ProgressWindow m_window;
    std::optional<BusyCursor> m_busy;
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
    qint64 m_done = 0;
};

} // namespace

bool RunWatched(QWidget* parent, const host::Roles& roles, const WatchedStep& step,
                std::chrono::milliseconds quiet)
{
    Display display(parent, step, quiet);
    const StepWatch watch(
        roles, [&](bool mayStop) { display.Look(mayStop); }, step.draft);
    try {
        step.work();
        return true;
    } catch (const embedded::Cancelled&) {
        return false;
    }
}

} // namespace editor
