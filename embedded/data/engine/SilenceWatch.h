#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>

namespace embedded {

/// Sees to it that nobody waits for ever for a server that stands still: its system keeps the connection up,
/// so that neither the client library nor the network notices. One thread of the program looks now and then;
/// when a statement takes long and nothing moves on its connection, it asks whether the server answers
/// anybody, and breaks the connection off when it does not. A statement that merely takes long goes on, and
/// so does what takes long to get through a slow network, in which the question might get stuck behind it.
class SilenceWatch
{
public:
    /// What is asked of a connection, by that thread.
    struct Questions
    {
        /// May take its time, and may be called when the watch has ended.
        std::function<bool()> isAnswering;
        /// How many bytes have got through the connection, in either direction; nothing where nobody knows.
        /// Called only while the connection's own thread waits.
        std::function<std::optional<std::uint64_t>()> traffic;
        /// Must end what the connection's own thread waits for; called only while that waits.
        std::function<void()> breakOff;
    };

    explicit SilenceWatch(Questions questions);
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

    struct Sight
    {
        std::uint64_t traffic = 0;
        Clock::time_point at;
    };

    bool HasMoved();

    Questions m_questions;
    // Of the watchman's, under his lock.
    std::optional<Clock::time_point> m_since; ///< since when somebody waits, or has had an answer
    std::optional<Sight> m_last;              ///< what the last look at the wait has seen
    unsigned long long m_wait = 0;            ///< tells one wait of the program from all others
};

} // namespace embedded
