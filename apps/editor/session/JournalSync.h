#pragma once

#include "platform/Text.h"

#include <QtCore/QMutex>

#include <functional>
#include <memory>

namespace platform {
class OutputFile;
}

namespace editor {

class WorkThread;

/// Hands to the disk what is written into one file piece by piece, behind the windows: a disk may take far
/// longer for that than somebody who types wants to wait. However fast the pieces come, one handing over
/// follows the other, each with all that has been written before it.
class JournalSync
{
public:
    /// Called on a thread of this object, with the reason in words, when the disk does not take something.
    using Failed = std::function<void(const CString& reason)>;

    explicit JournalSync(Failed failed);
    /// Returns when all has been handed over.
    ~JournalSync();
    JournalSync(const JournalSync&) = delete;
    JournalSync& operator=(const JournalSync&) = delete;

    /// The file as somebody has just written it. It is closed afterwards.
    void Take(std::unique_ptr<platform::OutputFile> file);

private:
    void Work();

    Failed m_failed;
    QMutex m_mutex;                               ///< guards the next two
    std::unique_ptr<platform::OutputFile> m_next; ///< null when there is nothing to do
    bool m_isWorking = false;
    std::unique_ptr<WorkThread> m_thread; ///< ends before the others
};

} // namespace editor
