#pragma once

#include "platform/Export.h"
#include "platform/Text.h"

#include <QtCore/QByteArray>

#include <memory>
#include <optional>
#include <stdexcept>

/// The one door to the file system. Everything that this system reads or writes as a file goes through
/// `Files()`, so that tests can put a failing device in its place and so that path texts are turned into
/// native paths in one spot. Single threaded, like the rest of the module.
namespace platform {

/// A file operation failed. The text names the file and the reason, ready to be shown to a person.
class KTQDDE_EXPORT FileError : public std::runtime_error
{
public:
    FileError(const CString& path, const CString& reason);
    ~FileError() override;

    /// The path text of the file.
    const CString& Path() const noexcept { return m_path; }
    /// Why it failed, in the words of the platform.
    const CString& Reason() const noexcept { return m_reason; }
    /// Path and reason in one line, as `what()` gives it in UTF-8.
    CString Message() const;

private:
    CString m_path;
    CString m_reason;
};

/// A file opened for writing in place: its old bytes stay until they are overwritten. Every operation raises
/// `FileError` when it fails. Closed by the destructor.
class KTQDDE_EXPORT OutputFile
{
public:
    virtual ~OutputFile();
    /// Length in bytes.
    virtual qint64 Size() const = 0;
    /// Makes sure that `size` bytes from the start have room on the disk, without changing length or content.
    /// Raises when there is no room. A platform that cannot reserve answers silently.
    virtual void Reserve(qint64 size) = 0;
    /// Writes `bytes` at the current position, which starts at 0 and moves on behind them.
    virtual void Write(const QByteArray& bytes) = 0;
    /// Moves the position to the end of the file.
    virtual void SeekToEnd() = 0;
    /// Cuts or extends the file to `size` bytes.
    virtual void Resize(qint64 size) = 0;
    /// Returns when the written bytes have been handed to the disk.
    virtual void Sync() = 0;
};

/// What stands at a path, seen through links.
enum class FileKind {
    Missing, ///< nothing, or a link that leads nowhere
    File,    ///< a regular file: it has a length, and reading it comes to an end
    Folder,
    Other, ///< a device, a pipe, a socket
};

/// A regular file opened for reading from the start, for what is too large to be held as a whole. The
/// operations raise `FileError` when they fail. Closed by the destructor.
class KTQDDE_EXPORT InputFile
{
public:
    virtual ~InputFile();
    /// Length in bytes.
    virtual qint64 Size() const = 0;
    /// Reads up to `length` bytes from the current position to `to` and moves on behind them. Gives how many;
    /// 0 at the end, fewer than asked only there.
    virtual qint64 Read(char* to, qint64 length) = 0;
    /// Moves the position to `position` bytes from the start.
    virtual void Seek(qint64 position) = 0;
};

/// The file system as this system needs it. Paths are path texts (see Paths.h). The virtual operations are
/// the seam for tests; a double usually derives from `RealFileSystem()`'s class through `FileSystemProxy`.
class KTQDDE_EXPORT FileSystem
{
public:
    virtual ~FileSystem();

    /// Whether a file or folder stands at `path`.
    virtual bool Exists(const CString& path) = 0;
    /// What stands at `path`.
    virtual FileKind KindOf(const CString& path) = 0;
    /// The path of what a link at `path` leads to, through as many links as there are, whether or not
    /// anything stands there; `path` as it is when there is no link.
    virtual CString ThroughLinks(const CString& path) = 0;
    /// The whole content of a file; nothing when it cannot be opened or read, or is no regular file: a device
    /// or a pipe may never end. `reason`, if given, tells why.
    virtual std::optional<QByteArray> Read(const CString& path, CString* reason = nullptr) = 0;
    /// The same for those who cannot go on without it: raises `FileError` instead of giving nothing.
    QByteArray ReadWhole(const CString& path);
    /// The first `length` bytes of a file, or all of it if it is shorter; nothing when it cannot be read.
    virtual std::optional<QByteArray> ReadHead(const CString& path, qint64 length) = 0;
    /// Opens a file for reading piece by piece. Raises `FileError`, also for what is no regular file: a
    /// folder, and pipes and devices, which have no end to rely on. Never gives null. A file system that has
    /// no such reading of its own serves it from what `Read` gives.
    virtual std::unique_ptr<InputFile> OpenForReading(const CString& path);
    /// Opens a file for writing in place, creating it when it is missing. Pipes and devices are opened for
    /// writing alone; a pipe that nobody reads is refused, not waited for. Raises `FileError`. Never gives
    /// null.
    virtual std::unique_ptr<OutputFile> OpenForWriting(const CString& path) = 0;
    /// Removes a file. False when it could not be removed.
    virtual bool Remove(const CString& path) = 0;
    /// Creates a folder, one level only. False when it exists or its parent does not.
    virtual bool CreateFolder(const CString& path) = 0;
    /// The names (not paths) of the files in `folder` that end in `extension` (".xml"), in any letter case,
    /// in no particular order. Not recursive. Empty when the folder does not exist.
    virtual CStringArray FindFiles(const CString& folder, const CString& extension) = 0;
    /// The names of the folders directly in `folder`, in no particular order. Empty when it does not exist.
    virtual CStringArray FindFolders(const CString& folder) = 0;
    /// Gives a file another name in its folder and hands that to the disk: whatever happens meanwhile, either
    /// name stands for all of the file. False, with the file under its old name, when something stands at
    /// `to` already, even if it came there a moment ago, or when the platform refuses.
    virtual bool Rename(const CString& from, const CString& to) = 0;
    /// Puts the file `from` into the place of the file `to` of the same folder, in one step, with the owner
    /// and the permissions of the latter, and hands that to the disk. False, with `to` as it was, when that
    /// would lose something that belongs to `to` (another name of it, an owner that this user cannot give,
    /// marks of the file system) or the platform refuses.
    virtual bool MoveOver(const CString& from, const CString& to) = 0;

    /// Replaces the content of `path`, or creates it. The new bytes get their room first, then they are
    /// written over the old ones, the file is cut to length and synced: a full disk or a refused open raises
    /// `FileError` before the old bytes are touched. There is no temporary file: links, permissions and
    /// whoever watches the file keep their file. Should the disk fail during the writing itself, `FileError`
    /// is raised, the file gets its former bytes back wherever the disk still takes them, and a file that did
    /// not stand there is removed. `former`, if given, is what the caller has just read from the file and
    /// spares reading it again. A device or a pipe is written as it comes.
    void WriteInPlace(const CString& path, const QByteArray& bytes, const QByteArray* former = nullptr);
    /// Replaces the content of `path`, or creates it, so that at every moment, the end of the process
    /// included, all of the old or all of the new content stands there. Links, owner and permissions stay.
    /// The new content is written to a file beside that then takes the place; where that would lose something
    /// of the old file, or nothing can be made beside it, it is written in place. Raises `FileError`, with
    /// the file as it was.
    void Replace(const CString& path, const QByteArray& bytes);
    /// Writes the former bytes of a file back after a write has failed midway. Does what the disk lets it,
    /// raises nothing, and does nothing when the file still holds them.
    void PutBack(const CString& path, const QByteArray& former) noexcept;
    /// Copies a file over another, which is created or overwritten in place. False when the source cannot be
    /// read or the target not be written, which then is as it was; `reason`, if given, tells why.
    bool Copy(const CString& from, const CString& to, CString* reason = nullptr);
};

/// Passes every operation on to another file system; the base of test doubles that change one or two.
class KTQDDE_EXPORT FileSystemProxy : public FileSystem
{
public:
    explicit FileSystemProxy(FileSystem& target);
    ~FileSystemProxy() override;
    bool Exists(const CString& path) override;
    FileKind KindOf(const CString& path) override;
    CString ThroughLinks(const CString& path) override;
    std::optional<QByteArray> Read(const CString& path, CString* reason) override;
    std::optional<QByteArray> ReadHead(const CString& path, qint64 length) override;
    std::unique_ptr<InputFile> OpenForReading(const CString& path) override;
    std::unique_ptr<OutputFile> OpenForWriting(const CString& path) override;
    bool Remove(const CString& path) override;
    bool CreateFolder(const CString& path) override;
    CStringArray FindFiles(const CString& folder, const CString& extension) override;
    CStringArray FindFolders(const CString& folder) override;
    bool Rename(const CString& from, const CString& to) override;
    bool MoveOver(const CString& from, const CString& to) override;

protected:
    FileSystem& Target() noexcept { return m_target; }

private:
    FileSystem& m_target;
};

/// The file system in force: the real one, or what a `ScopedFileSystem` has put in its place.
KTQDDE_EXPORT FileSystem& Files();

/// The platform's own file system.
KTQDDE_EXPORT FileSystem& RealFileSystem();

/// Puts a file system in the place of the one in force for as long as it lives. Does not own it.
class KTQDDE_EXPORT ScopedFileSystem
{
public:
    explicit ScopedFileSystem(FileSystem& replacement);
    ~ScopedFileSystem();
    ScopedFileSystem(const ScopedFileSystem&) = delete;
    ScopedFileSystem& operator=(const ScopedFileSystem&) = delete;

private:
    FileSystem* m_previous;
};

} // namespace platform
