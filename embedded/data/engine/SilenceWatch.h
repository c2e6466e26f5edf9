#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

class QThread;

namespace embedded {

/// Sees to it that nobody waits for ever for a server that stands still: its system keeps the connection up,
/// so that neither the client library nor the network notices. A thread of this object looks now and then;
/// when a statement takes long, it asks whether the server answers anybody, and breaks the connection off
/// when it does not. A statement that merely takes long goes on.
class SilenceWatch
{
public:
    /// Both are called by a thread of this. `isAnswering` may take its time; `breakOff` must end what the
    /// connection's own thread waits for, and is called only while that thread waits.
    SilenceWatch(std::function<bool()> isAnswering, std::function<void()> breakOff);
    ~SilenceWatch();
    SilenceWatch(const SilenceWatch&) = delete;
    SilenceWatch& operator=(const SilenceWatch&) = delete;

    /// The time that the connection's thread waits for the server.
    class Wait
    {
    public:
        /// `watch` may be null.
        explicit Wait(SilenceWatch* watch);
        ~Wait();
        Wait(const Wait&) = delete;
        Wait& operator=(const Wait&) = delete;

    private:
        SilenceWatch* m_watch;
    };

private:
    using Clock = std::chrono::steady_clock;

    void Run();

    std::function<bool()> m_isAnswering;
    std::function<void()> m_breakOff;
    std::mutex m_mutex;
    std::condition_variable m_end;
    bool m_isEnding = false;
    std::optional<Clock::time_point> m_since; ///< since when somebody waits, or has had an answer
    unsigned m_waits = 0;                     ///< tells one wait from the next one
    std::unique_ptr<QThread> m_thread;
};

} // namespace embedded
