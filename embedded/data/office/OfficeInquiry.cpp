#include "embedded/data/office/OfficeInquiry.h"

#include "embedded/data/engine/Error.h"
#include "platform/Apart.h"

#include <QtCore/QThread>

#include <chrono>
#include <limits>
#include <utility>

using namespace std::chrono_literals;

namespace embedded {

namespace {

/// A wait that nobody notices.
constexpr auto Moment = 50ms;

} // namespace

OfficeInquiry::OfficeInquiry(const CString& office, ProjectUse use)
    : m_office(office), m_use(std::move(use)), m_answer(m_promise.get_future()),
      m_thread(QThread::create([this] { Ask(); }))
{
    m_thread->start();
    // Asked in this order, since the thread may end in between.
    if (!m_thread->isRunning() && !m_thread->isFinished()) Ask();
}

OfficeInquiry::~OfficeInquiry()
{
    m_thread->wait();
}

void OfficeInquiry::Ask()
{
    bool isAnswered = false;
    try {
        Office office(m_office);
        const OfficeAnswer state = office.First();
        m_promise.set_value(state);
        isAnswered = true;
        if (state.right >= OfficeRight::Editor) NoteProjectUse(office, m_use);
    } catch (...) {
        // What comes after the answer is tried again the next time.
        if (!isAnswered) m_promise.set_exception(std::current_exception());
    }
}

OfficeAnswer OfficeInquiry::Answer()
{
    if (m_answer.wait_for(Moment) != std::future_status::ready)
        platform::RunApart(std::numeric_limits<qint64>::max(), [this] { m_answer.wait(); });
    return m_answer.get();
}

} // namespace embedded
