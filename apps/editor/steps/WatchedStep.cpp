#include "editor/steps/WatchedStep.h"

#include "editor/steps/BusyCursor.h"
#include "editor/steps/StepWatch.h"
#include "embedded/data/engine/Progress.h"
#include "platform/Messages.h"

#include <QtCore/QCoreApplication>

#include <optional>

using namespace std::chrono_literals;

namespace editor {

namespace {

/// What the user sees of a step: a busy cursor first, then the window. A message of the step's is shown under
/// the usual cursor, and the time that the user takes to answer does not count.
class Display
{
public:
    Display(QWidget* parent, const WatchedStep& step, std::chrono::milliseconds quiet)
        : m_step(step), m_quiet(step.isLong ? 0ms : quiet), m_window(parent, step.text, m_control),
          m_show(platform::InstallMessageHandler([this](const auto& message) { return Show(message); }))
    {
        m_busy.emplace();
    }
    ~Display() { platform::InstallMessageHandler(m_show); }
    Display(const Display&) = delete;
    Display& operator=(const Display&) = delete;

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
    platform::Answer Show(const platform::Message& message)
    {
        const bool wasBusy = m_busy.has_value();
        m_busy.reset();
        const platform::ScopedMessageHandler former(m_show);
        const platform::Answer answer = platform::Show(message);
        if (wasBusy) m_busy.emplace();
        m_start = std::chrono::steady_clock::now();
        return answer;
    }

    const WatchedStep& m_step;
    std::chrono::milliseconds m_quiet;
    StepControl m_control;
    ProgressWindow m_window;
    platform::MessageHandler m_show; ///< whoever shows messages but for this
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
