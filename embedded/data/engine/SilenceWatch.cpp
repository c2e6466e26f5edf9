#include "embedded/data/engine/SilenceWatch.h"

#include <QtCore/QThread>

#include <utility>

using namespace std::chrono_literals;

namespace embedded {

namespace {

/// How often is looked, and after what time a wait is long. With the time that the question takes that is
/// less than ten seconds.
constexpr auto Look = 1s;
constexpr auto Long = 4s;

} // namespace

SilenceWatch::SilenceWatch(std::function<bool()> isAnswering, std::function<void()> breakOff)
    : m_isAnswering(std::move(isAnswering)), m_breakOff(std::move(breakOff)),
      m_thread(QThread::create([this] { Run(); }))
{
    m_thread->start();
}

SilenceWatch::~SilenceWatch()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isEnding = true;
    }
    m_end.notify_one();
    m_thread->wait();
}

void SilenceWatch::Run()
{
    std::unique_lock lock(m_mutex);
    while (!m_end.wait_for(lock, Look, [this] { return m_isEnding; })) {
        if (!m_since || Clock::now() - *m_since < Long) continue;
        const unsigned wait = m_waits;
        lock.unlock();
        const bool isAnswering = m_isAnswering();
        lock.lock();
        if (!m_since || m_waits != wait) continue;
        if (!isAnswering) m_breakOff();
        m_since = Clock::now();
    }
}

SilenceWatch::Wait::Wait(SilenceWatch* watch) : m_watch(watch)
{
    if (m_watch == nullptr) return;
    const std::lock_guard lock(m_watch->m_mutex);
    m_watch->m_since = Clock::now();
    ++m_watch->m_waits;
}

SilenceWatch::Wait::~Wait()
{
    if (m_watch == nullptr) return;
    const std::lock_guard lock(m_watch->m_mutex);
    m_watch->m_since.reset();
}

} // namespace embedded
