#pragma once

#include "embedded/data/engine/Error.h"
#include "embedded/data/history/History.h"
#include "embedded/data/history/KnownSpecialty.h"
#include "embedded/data/history/RuleFileLock.h"
#include "platform/Files.h"

#include <QtCore/QObject>

#include <functional>
#include <map>
#include <memory>
#include <optional>

namespace embedded {

/// Stands in front of the file system while windows work on rule files, so that nothing is lost whichever
/// file a dialog turns to. In force from its making to its end, in front of the file system in force before.
///
/// Right before anything writes or removes a rule file, a copy of it goes into the project's history.
///
/// From the reading of a rule file until it has been written, or else until control returns to the event
/// loop, the file is locked against other programs: the module's save reads, composes and writes in one go,
/// and so does so alone. Where the lock could not be had for reading, or was given back since, the writing
/// takes it, and is refused when the file is no longer what was read. Of a reading and a writing that belong
/// together only the first one waits for another program.
///
/// A dialog holds a specialty for longer than that, and saves it on every way out. When another program has
/// changed the same specialty meanwhile, that version is kept whatever the limit of copies is, and told.
///
/// Works on the thread that made it; other threads pass, for they only look.
class KeepingFiles : public platform::FileSystemProxy
{
public:
    /// Tells rule files, by path text, from the other files that pass here.
    using IsRuleFile = std::function<bool(const CString& path)>;
    /// Asked when a copy cannot be kept: whether the file may be written all the same. Yes is remembered.
    using MayGoOn = std::function<bool(const Error& error)>;

    /// What has to do with other programs at work on the same files.
    struct Others
    {
        /// The specialty that is worked on; without it none is watched.
        std::function<CString()> specialty;
        /// Called from the event loop after a save has written over what another program had saved in the
        /// specialty; `copy` holds that.
        std::function<void(const CString& path, const HistoryEntry& copy)> writtenOver;
        /// Makes what is asked during one wait for another program. Without it a wait lasts as long as it
        /// may.
        std::function<RuleFileLock::GoOn()> wait;
    };

    KeepingFiles(History history, IsRuleFile isRuleFile, MayGoOn mayGoOn, Others others = {});
    ~KeepingFiles() override;

    /// Keeps a copy of a file now, whatever its name, as something is about to open it: what it holds then
    /// is what will be known of it. Raises `Occupied` when another program holds it, and
    /// `platform::FileError` when no copy could be kept and the answer was no.
    void Keep(const CString& path);

    /// While one lives, returning to the event loop gives no lock back: for a step that handles events
    /// between reading and writing. Its end gives them back.
    class Step
    {
    public:
        explicit Step(KeepingFiles& files) : m_files(files) { ++m_files.m_running; }
        ~Step();
        Step(const Step&) = delete;
        Step& operator=(const Step&) = delete;

    private:
        KeepingFiles& m_files;
    };

    std::optional<QByteArray> Read(const CString& path, CString* reason) override;
    /// Raises `platform::FileError`, with the file untouched, when no copy could be kept and the answer was
    /// no, and when another program holds the file or has changed it since it was read for this.
    std::unique_ptr<platform::OutputFile> OpenForWriting(const CString& path) override;
    /// False, with the file untouched, in the same cases.
    bool Remove(const CString& path) override;
    bool MoveOver(const CString& from, const CString& to) override;

private:
    class Output;

    /// The same for what is a part of a step: the rest of it may still write what it has read.
    class Part
    {
    public:
        explicit Part(KeepingFiles& files) : m_files(files) { ++m_files.m_running; }
        ~Part();
        Part(const Part&) = delete;
        Part& operator=(const Part&) = delete;

    private:
        KeepingFiles& m_files;
    };

    /// From the reading of a file to its writing.
    struct Work
    {
        std::optional<RuleFileLock> lock;
        bool hasWaited = false;
        bool isRead = false;
        bool isWriting = false; ///< or was to be written
        std::optional<QByteArray> read;
        std::optional<QByteArray> former; ///< what another program left in the specialty
        std::optional<HistoryEntry> copy; ///< of that
    };

    bool IsWatched(const CString& path) const;
    void Lock(const CString& path);
    void Prepare(const CString& path);
    void LookForOthers(const CString& path, Work& work);
    void AfterWriting(const CString& path);
    void Later(const std::function<void()>& step);
    void ReleaseLater();
    void Release();
    void BeforeChange(const CString& path);
    void KeepNow(const CString& path);

    History m_history;
    IsRuleFile m_isRuleFile;
    MayGoOn m_mayGoOn;
    Others m_others;
    std::map<CString, Work> m_work;
    std::map<CString, KnownSpecialty> m_known;
    QObject m_loop;          ///< what is due in the event loop ends with it
    bool m_releases = false; ///< that is due
    int m_running = 0;       ///< steps that may handle events
    CString m_torn;          ///< the file whose writing broke off: what comes next puts its bytes back
    bool m_keeping = false;  ///< the history writes through here, too
    bool m_goesOn = false;   ///< whoever was asked went on without copies
    platform::ScopedFileSystem m_installed;
};

} // namespace embedded
