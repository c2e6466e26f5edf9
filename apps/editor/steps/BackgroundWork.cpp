#include "editor/steps/BackgroundWork.h"

#include "editor/messages/ErrorBox.h"
#include "editor/steps/WorkThread.h"

#include <utility>

namespace editor {

BackgroundWork::BackgroundWork(QObject* parent) : QObject(parent) {}

BackgroundWork::~BackgroundWork()
{
    Leave();
    m_thread.reset(); // waits
}

void BackgroundWork::Start(Work work)
{
    m_next = std::move(work);
    m_wanted = true;
    if (m_thread)
        m_control->Cancel();
    else
        Begin();
}

void BackgroundWork::Leave()
{
    m_next = {};
    m_wanted = false;
    if (m_thread) m_control->Cancel();
}

double BackgroundWork::Progress() const
{
    const qint64 total = m_control ? m_control->Total() : 0;
    return total <= 0 ? 0 : static_cast<double>(m_control->Done()) / static_cast<double>(total);
}

void BackgroundWork::Begin()
{
    m_control = std::make_unique<StepControl>();
    m_outcome = {};
    m_thread = std::make_unique<WorkThread>([this, work = std::exchange(m_next, {})] {
        // Told in any case; what is raised waits in the thread until somebody takes it over.
        struct Told
        {
            BackgroundWork& owner;
            ~Told()
            {
                QMetaObject::invokeMethod(
                    &owner, [work = &owner] { work->TakeOver(); }, Qt::QueuedConnection);
            }
        } const told{*this};
        m_outcome = work(*m_control);
    });
}

void BackgroundWork::TakeOver()
{
    m_thread->Wait(QDeadlineTimer::Forever); // it has told this as the last that it does
    const std::unique_ptr<WorkThread> ended = std::move(m_thread);
    const Outcome outcome = std::exchange(m_outcome, {});
    if (m_next) return Begin();
    if (!std::exchange(m_wanted, false)) return;
    RunGuarded([&] {
        try {
            ended->Raise();
        } catch (const embedded::Cancelled&) {
            return; // by itself, since nobody has left it
        }
        if (outcome) outcome();
    });
}

} // namespace editor
