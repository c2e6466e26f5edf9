#include "rules/takeoff/TakeoffAhead.h"

namespace rules {

TakeoffAhead::TakeoffAhead(TakeoffReader& reader) : m_reader(reader), m_thread([this] { Read(); }) {}

TakeoffAhead::~TakeoffAhead()
{
    {
        const std::lock_guard lock(m_mutex);
        m_stop = true;
    }
    m_changed.notify_all();
    m_thread.join();
}

/// What the thread does: fills batch after batch as long as there is a free one.
void TakeoffAhead::Read()
{
    for (std::size_t number = 0;; ++number) {
        {
            std::unique_lock lock(m_mutex);
            m_changed.wait(lock, [&] { return m_stop || number < m_done + BatchCount; });
            if (m_stop) return;
        }
        Batch& batch = At(number);
        Fill(batch);
        {
            const std::lock_guard lock(m_mutex);
            m_filled = number + 1;
        }
        m_changed.notify_all();
        if (batch.isLast) return;
    }
}

void TakeoffAhead::Fill(Batch& batch)
{
    batch.count = 0;
    try {
        while (batch.count < RowsAtOnce && m_reader.Next(batch.rows[batch.count]))
            ++batch.count;
        batch.isLast = batch.count < RowsAtOnce;
        batch.progress = m_reader.Progress();
    } catch (...) {
        batch.error = std::current_exception();
        batch.isLast = true;
    }
}

const TakeoffRow* TakeoffAhead::Next()
{
    for (;;) {
        if (m_hasBatch) {
            Batch& batch = At(m_done);
            if (m_given < batch.count) return &batch.rows[m_given++];
            if (batch.error) std::rethrow_exception(batch.error);
            if (batch.isLast) return nullptr;
        }
        std::unique_lock lock(m_mutex);
        if (m_hasBatch) {
            ++m_done;
            m_changed.notify_all();
        }
        m_changed.wait(lock, [&] { return m_filled > m_done; });
        m_hasBatch = true;
        m_given = 0;
    }
}

double TakeoffAhead::Progress() const
{
    return m_hasBatch ? m_batches[m_done % BatchCount].progress : 0;
}

} // namespace rules
