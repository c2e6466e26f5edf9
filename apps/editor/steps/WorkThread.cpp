#include "editor/steps/WorkThread.h"

#include <QtCore/QThread>

#include <utility>

namespace editor {

WorkThread::WorkThread(std::function<void()> work)
    : m_thread(QThread::create([this, work = std::move(work)] {
          try {
              work();
          } catch (...) {
              m_raised = std::current_exception();
          }
      }))
{
    m_thread->start();
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
    return m_thread->isFinished();
}

void WorkThread::Raise() const
{
    if (m_raised) std::rethrow_exception(m_raised);
}

} // namespace editor
