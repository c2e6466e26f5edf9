#pragma once

#include "embedded/data/engine/Progress.h"

#include <QtCore/QtGlobal>

#include <atomic>

namespace editor {

/// What a long step tells and asks while it runs. May be used by two threads: the step's own and the
/// window's.
class StepControl
{
public:
    /// Says how far the step is. A `total` of 0 says that the end is not known.
    void Report(qint64 done, qint64 total) noexcept
    {
        m_done = done;
        m_total = total;
    }
    /// Says that the step can no longer be left: whoever cancels from now on is not heard.
    void Commit() noexcept { m_committed = true; }
    /// Raises `embedded::Cancelled` when the user has asked the step to stop while it could be left. To be
    /// called between pieces of work.
    void Check() const
    {
        if (m_cancelled) throw embedded::Cancelled();
    }

    /// The same for work that calls back with its percentage.
    embedded::Progress AsProgress() noexcept
    {
        return [this](int percent) {
            Report(percent, 100);
            return !m_cancelled;
        };
    }

    bool IsCommitted() const noexcept { return m_committed; }
    void Cancel() noexcept
    {
        if (!m_committed) m_cancelled = true;
    }
    bool IsCancelled() const noexcept { return m_cancelled; }
    qint64 Done() const noexcept { return m_done; }
    qint64 Total() const noexcept { return m_total; }

private:
    std::atomic<bool> m_cancelled = false;
    std::atomic<bool> m_committed = false;
    std::atomic<qint64> m_done = 0;
    std::atomic<qint64> m_total = 0;
};

} // namespace editor
