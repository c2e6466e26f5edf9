#pragma once

#include "rules/takeoff/TakeoffReader.h"

#include <array>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>

namespace rules {

/// Reads a take-off table ahead in a thread of its own, so that whoever prices the components waits for the
/// file no longer than it takes. Holds a thousand rows, whatever the length of the table.
class KTQDDE_RULES_EXPORT TakeoffAhead
{
public:
    /// Starts reading. From then on until its own end this alone uses `reader`, but for what does not change:
    /// its headings. `reader` must outlive it.
    explicit TakeoffAhead(TakeoffReader& reader);
    /// Ends the reading, wherever it is.
    ~TakeoffAhead();
    TakeoffAhead(const TakeoffAhead&) = delete;
    TakeoffAhead& operator=(const TakeoffAhead&) = delete;

    /// The next component, which stands until the next call; null at the end. Raises, at its place in the
    /// table, what the reader raised; reading cannot go on then.
    const TakeoffRow* Next();
    /// How much of the file is behind the component given last, from 0 to 1.
    double Progress() const;

private:
    static constexpr std::size_t RowsAtOnce = 256;
    static constexpr std::size_t BatchCount = 4;

    struct Batch
    {
        std::array<TakeoffRow, RowsAtOnce> rows;
        std::size_t count = 0;
        double progress = 0;
        std::exception_ptr error; ///< behind its rows
        bool isLast = false;
    };

    void Read();
    void Fill(Batch& batch);
    Batch& At(std::size_t number) { return m_batches[number % BatchCount]; }

    TakeoffReader& m_reader;
    std::array<Batch, BatchCount> m_batches;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::size_t m_filled = 0; ///< how many batches have been filled
    std::size_t m_done = 0;   ///< how many of them are not looked at any more
    bool m_stop = false;
    std::size_t m_given = 0; ///< of the batch that is looked at, how many rows
    bool m_hasBatch = false;
    std::thread m_thread; ///< last: it starts when all else stands
};

} // namespace rules
