#include "embedded/data/history/BatchHistory.h"

#include "platform/Files.h"

#include <utility>

namespace embedded {

BatchHistory::BatchHistory(History& history, CString openFile)
    : m_history(history), m_openFile(std::move(openFile))
{
}

CStringArray BatchHistory::FilesOf(BatchWrites writes, const CString& namedFile) const
{
    switch (writes) {
    case BatchWrites::Open:
        return {m_openFile};
    case BatchWrites::Named:
        return {namedFile};
    case BatchWrites::Both:
        return {m_openFile, namedFile};
    case BatchWrites::Nothing:
        break;
    }
    return {};
}

void BatchHistory::Before(BatchWrites writes, const CString& namedFile)
{
    for (const CString& path : FilesOf(writes, namedFile))
        Keep(path);
}

void BatchHistory::After(BatchWrites writes, const CString& namedFile)
{
    for (const CString& path : FilesOf(writes, namedFile))
        m_files[path].saved = platform::Files().Read(path);
    if (writes == BatchWrites::Both) m_openFile = namedFile;
}

void BatchHistory::Keep(const CString& path)
{
    File& file = m_files[path];
    const bool isOwn = file.saved.has_value() && platform::Files().Read(path) == file.saved;
    // Keeping removes what is beyond the limit, which must never be the copy of the state before the batch.
    if (isOwn && m_history.Limit() == 1) return;
    if (isOwn && file.inBetween) {
        m_history.Forget(*file.inBetween);
        file.inBetween.reset();
    }
    if (const auto kept = m_history.Keep(path)) file.inBetween = isOwn ? kept : std::nullopt;
}

} // namespace embedded
