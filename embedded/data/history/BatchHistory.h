#pragma once

#include "embedded/data/history/History.h"

#include <map>

namespace embedded {

/// Which files an operation of a batch may write over.
enum class BatchWrites {
    Nothing,
    Open,  ///< the file that is open
    Named, ///< the file that the request names
    Both,  ///< the open one, and the named one, which is open afterwards
};

/// Keeps copies of what the operations of one batch are about to write over. The copy of what a file held
/// before the batch stays, and so does what another program wrote meanwhile. Of the states in between, which
/// the batch itself has saved, only the last has a copy, and none where a single copy is all that is kept: a
/// batch that saves a thousand times must not push out the copies of the days before.
class BatchHistory
{
public:
    /// `history` must outlive this. It already holds a copy of `openFile`, a path text.
    BatchHistory(History& history, CString openFile);

    /// To be called before an operation. Raises `Error` when a copy cannot be kept.
    void Before(BatchWrites writes, const CString& namedFile);
    /// To be called after an operation that was carried out.
    void After(BatchWrites writes, const CString& namedFile);

private:
    /// What the batch knows of a file.
    struct File
    {
        std::optional<QByteArray> saved;       ///< what it held after the batch's last save
        std::optional<HistoryEntry> inBetween; ///< the copy of an earlier save of the batch
    };

    CStringArray FilesOf(BatchWrites writes, const CString& namedFile) const;
    void Keep(const CString& path);

    History& m_history;
    CString m_openFile;
    std::map<CString, File> m_files;
};

} // namespace embedded
