#include "editor/steps/WorkThread.h"

#include <QtCore/QThread>

#include <utility>

namespace editor {

WorkThread::WorkThread(std::function<void()> work, unsigned stackSize)
    : m_work(std::move(work)), m_thread(QThread::create([this] { Run(); }))
{
    m_thread->setStackSize(stackSize);
    m_thread->start();
    // Asked in this order, since the thread may end in between.
    if (!m_thread->isRunning() && !m_thread->isFinished()) Run();
}

void WorkThread::Run() noexcept
{
    try {
        m_work();
    } catch (...) {
        m_raised = std::current_exception();
    }
}

WorkThread::~WorkThread()
{
    m_thread->wait();
}

bool WorkThread::Wait(QDeadlineTimer deadline)
{
    return m_thread->wait(deadline);
}

bool WorkThread::HasEnded() const
{
    return !m_thread->isRunning();
}

void WorkThread::Raise() const
{
    if (m_raised) std::rethrow_exception(m_raised);
}

} // namespace editor
