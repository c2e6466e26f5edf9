#pragma once

#include <QtCore/QString>

#include <atomic>
#include <exception>
#include <functional>

class QWidget;

namespace editor {

/// Raised inside a long step when the user has asked it to stop.
class Cancelled : public std::exception
{
public:
    const char* what() const noexcept override { return "cancelled"; }
};

/// What a long step tells and asks while it runs. Used by two threads: the step's own and the window's.
class StepControl
{
public:
    /// Says how far the step is. A `total` of 0 says that the end is not known.
    void Report(qint64 done, qint64 total) noexcept;
    /// Raises `Cancelled` when the user has asked the step to stop. To be called between pieces of work.
    void Check() const;

    bool IsCancelled() const noexcept { return m_cancelled; }
    void Cancel() noexcept { m_cancelled = true; }
    qint64 Done() const noexcept { return m_done; }
    qint64 Total() const noexcept { return m_total; }

private:
    std::atomic<bool> m_cancelled = false;
    std::atomic<qint64> m_done = 0;
    std::atomic<qint64> m_total = 0;
};

using LongStep = std::function<void(StepControl&)>;

/// Runs `step` on a thread of its own and returns when it has ended. A step that takes a moment longer shows
/// a modal window with `text`, its progress and a button that cancels it. False when the step ended by
/// `Cancelled`; whatever else it raised is raised here. The step must not touch the installed host or any
/// widget: both belong to the window's thread.
bool RunLongStep(QWidget* parent, const QString& text, const LongStep& step);

} // namespace editor
