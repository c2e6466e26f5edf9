#include "embedded/data/engine/SilenceWatch.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

using namespace std::chrono_literals;

namespace embedded {

namespace {

/// How often is looked, and after what time a wait is long. With the time that the question takes that is
/// less than ten seconds.
constexpr auto Look = 1s;
constexpr auto Long = 4s;

} // namespace

/// The thread, from the first watch to the end of the program: one that began and ended with each connection
/// would cost more than the connection.
class SilenceWatch::Watchman
{
public:
    Watchman()
    {
        try {
            m_thread = std::thread([this] { Run(); });
        } catch (const std::system_error&) {
            // Where the system gives no thread nothing is watched.
        }
    }
    ~Watchman()
    {
        {
            const std::lock_guard lock(m_mutex);
            m_isEnding = true;
        }
        m_end.notify_one();
        if (m_thread.joinable()) m_thread.join();
    }
    Watchman(const Watchman&) = delete;
    Watchman& operator=(const Watchman&) = delete;

    void Add(SilenceWatch& watch)
    {
        const std::lock_guard lock(m_mutex);
        m_watches.push_back(&watch);
    }
    void Remove(SilenceWatch& watch)
    {
        const std::lock_guard lock(m_mutex);
        m_watches.erase(std::find(m_watches.begin(), m_watches.end(), &watch));
    }
    void Begin(SilenceWatch& watch)
    {
        const std::lock_guard lock(m_mutex);
        watch.m_since = Clock::now();
        watch.m_last.reset();
        watch.m_wait = ++m_waits;
    }
    void End(SilenceWatch& watch)
    {
        const std::lock_guard lock(m_mutex);
        watch.m_since.reset();
    }

private:
    void Run()
    {
        std::unique_lock lock(m_mutex);
        while (!m_end.wait_for(lock, Look, [this] { return m_isEnding; })) {
            for (SilenceWatch* const watch : m_watches)
                if (watch->m_since) watch->HasMoved();
            while (SilenceWatch* const found = FindLong()) {
                const unsigned long long wait = found->m_wait;
                const auto isAnswering = found->m_questions.isAnswering;
                lock.unlock();
                const bool answers = isAnswering();
                lock.lock();
                Judge(wait, answers);
            }
        }
    }
    /// A watch whose wait takes long; null for none.
    SilenceWatch* FindLong() const
    {
        const auto now = Clock::now();
        const auto found = std::find_if(m_watches.begin(), m_watches.end(), [&](const SilenceWatch* watch) {
            return watch->m_since && now - *watch->m_since >= Long;
        });
        return found == m_watches.end() || m_isEnding ? nullptr : *found;
    }
    /// Unless the wait, or the connection, has ended meanwhile.
    void Judge(unsigned long long wait, bool answers)
    {
        for (SilenceWatch* const watch : m_watches) {
            if (!watch->m_since || watch->m_wait != wait) continue;
            if (!watch->HasMoved() && !answers) watch->m_questions.breakOff();
            watch->m_since = Clock::now();
        }
    }

    std::mutex m_mutex;
    std::condition_variable m_end;
    bool m_isEnding = false;
    std::vector<SilenceWatch*> m_watches;
    unsigned long long m_waits = 0;
    std::thread m_thread;
};

SilenceWatch::Watchman& SilenceWatch::TheWatchman()
{
    static Watchman watchman;
    return watchman;
}

SilenceWatch::SilenceWatch(Questions questions) : m_questions(std::move(questions))
{
    TheWatchman().Add(*this);
}

/// Whether bytes have got through since the last look; whoever waits has had an answer then, at the time of
/// that look or later.
bool SilenceWatch::HasMoved()
{
    const std::optional<std::uint64_t> traffic = m_questions.traffic();
    if (!traffic) return false;
    const bool hasMoved = m_last && m_last->traffic != *traffic;
    if (hasMoved) m_since = std::max(*m_since, m_last->at);
    m_last = {*traffic, Clock::now()};
    return hasMoved;
}

SilenceWatch::~SilenceWatch()
{
    TheWatchman().Remove(*this);
}

SilenceWatch::Wait::Wait(SilenceWatch* watch) : m_watch(watch)
{
    if (m_watch != nullptr) TheWatchman().Begin(*m_watch);
}

SilenceWatch::Wait::~Wait()
{
    if (m_watch != nullptr) TheWatchman().End(*m_watch);
}

} // namespace embedded
