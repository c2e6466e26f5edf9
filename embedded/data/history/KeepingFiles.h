#pragma once

#include "embedded/data/history/History.h"
#include "embedded/data/sqlite/Error.h"
#include "platform/Files.h"

#include <functional>

namespace embedded {

/// Keeps a copy of every rule file in the project's history at the last moment: right before anything writes
/// or removes it. So a copy is there whichever file a dialog turns to while it is open, and what another
/// program wrote meanwhile is kept before it is written over. In force from its making to its end, in front
/// of the file system in force before.
class KeepingFiles : public platform::FileSystemProxy
{
public:
    /// Tells rule files, by path text, from the other files that pass here.
    using IsRuleFile = std::function<bool(const CString& path)>;
    /// Asked when a copy cannot be kept: whether the file may be written all the same. Yes is remembered.
    using MayGoOn = std::function<bool(const Error& error)>;

    KeepingFiles(History history, IsRuleFile isRuleFile, MayGoOn mayGoOn);
    ~KeepingFiles() override;

    /// Keeps a copy of a file now, whatever its name. Raises `platform::FileError` when no copy could be kept
    /// and the answer was no.
    void Keep(const CString& path);

    /// Raises `platform::FileError`, with the file untouched, when no copy could be kept and the answer was
    /// no.
    std::unique_ptr<platform::OutputFile> OpenForWriting(const CString& path) override;
    /// False, with the file untouched, in the same case.
    bool Remove(const CString& path) override;

private:
    class Output;

    void BeforeChange(const CString& path);

    History m_history;
    IsRuleFile m_isRuleFile;
    MayGoOn m_mayGoOn;
    CString m_torn;         ///< the file whose writing broke off: what comes next puts its bytes back
    bool m_keeping = false; ///< the history writes through here, too
    bool m_goesOn = false;  ///< whoever was asked went on without copies
    platform::ScopedFileSystem m_installed;
};

} // namespace embedded
