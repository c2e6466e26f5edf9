#pragma once

#include <QtCore/QDeadlineTimer>

#include <exception>
#include <functional>
#include <memory>

class QThread;

namespace editor {

/// A piece of work on a thread of its own, begun with this object. Where the system gives no thread the work
/// is done at once on that of the caller, who waits for it anyway.
class WorkThread
{
public:
    /// `stackSize` is the room of the thread in bytes; 0 for the usual one.
    explicit WorkThread(std::function<void()> work, unsigned stackSize = 0);
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
    void Run() noexcept;

    std::function<void()> m_work;
    std::exception_ptr m_raised;
    std::unique_ptr<QThread> m_thread;
};

} // namespace editor
