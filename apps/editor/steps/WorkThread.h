#pragma once

#include <QtCore/QDeadlineTimer>

#include <exception>
#include <functional>
#include <memory>

class QThread;

namespace editor {

/// A piece of work on a thread of its own, begun with this object.
class WorkThread
{
public:
    explicit WorkThread(std::function<void()> work);
    /// Waits for the end of the work.
    ~WorkThread();
    WorkThread(const WorkThread&) = delete;
    WorkThread& operator=(const WorkThread&) = delete;

    /// Whether the work has ended by then.
    bool Wait(QDeadlineTimer deadline);
    bool HasEnded() const;
    /// Raises what the work has raised, which must have ended.
    void Raise() const;

private:
    std::exception_ptr m_raised;
    std::unique_ptr<QThread> m_thread;
};

} // namespace editor
