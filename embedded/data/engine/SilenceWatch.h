#pragma once

#include <chrono>
#include <functional>
#include <optional>

namespace embedded {

/// Sees to it that nobody waits for ever for a server that stands still: its system keeps the connection up,
/// so that neither the client library nor the network notices. One thread of the program looks now and then;
/// when a statement takes long, it asks whether the server answers anybody, and breaks the connection off
/// when it does not. A statement that merely takes long goes on.
class SilenceWatch
{
public:
    /// Both are called by that thread. `isAnswering` may take its time and may be called when this has ended;
    /// `breakOff` must end what the connection's own thread waits for, and is called only while that thread
    /// waits.
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
    class Watchman;
    using Clock = std::chrono::steady_clock;

    static Watchman& TheWatchman();

    std::function<bool()> m_isAnswering;
    std::function<void()> m_breakOff;
    // Of the watchman's, under his lock.
    std::optional<Clock::time_point> m_since; ///< since when somebody waits, or has had an answer
    unsigned long long m_wait = 0;            ///< tells one wait of the program from all others
};

} // namespace embedded
