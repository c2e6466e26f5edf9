#include "editor/session/JournalSync.h"

#include "editor/steps/WorkThread.h"
#include "platform/Files.h"

#include <utility>

namespace editor {

JournalSync::JournalSync(Failed failed) : m_failed(std::move(failed)) {}

JournalSync::~JournalSync() = default;

/// A file that still waits is the same one, and what was written into it goes to the disk with this one.
void JournalSync::Take(std::unique_ptr<platform::OutputFile> file)
{
    {
        const QMutexLocker lock(&m_mutex);
        m_next.swap(file);
        if (std::exchange(m_isWorking, true)) return;
    }
    m_thread.reset(); // it has nothing to do any more
    m_thread = std::make_unique<WorkThread>([this] { Work(); });
}

void JournalSync::Work()
{
    for (;;) {
        std::unique_ptr<platform::OutputFile> file;
        {
            const QMutexLocker lock(&m_mutex);
            m_isWorking = m_next != nullptr;
            if (!m_isWorking) return;
            file = std::move(m_next);
        }
        try {
            file->Sync();
        } catch (const platform::FileError& error) {
            m_failed(error.Message());
        }
    }
}

} // namespace editor
