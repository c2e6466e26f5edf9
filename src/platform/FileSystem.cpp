#include "platform/Files.h"

#include "platform/Paths.h"
#include "platform/ReplacedFile.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

// What is built from the operations of a file system, whichever it is: nothing here touches a file itself.

namespace platform {

namespace {

/// A device or a pipe has no length, and nothing that could be put back.
void WriteStream(OutputFile& stream, const QByteArray& bytes)
{
    stream.Write(bytes);
    stream.Sync();
}

/// A file of which all is held.
class HeldInputFile : public InputFile
{
public:
    explicit HeldInputFile(QByteArray bytes) : m_bytes(std::move(bytes)) {}

    qint64 Size() const override { return m_bytes.size(); }

    qint64 Read(char* to, qint64 length) override
    {
        const qint64 count = qBound(qint64{0}, m_bytes.size() - m_position, length);
        std::copy_n(m_bytes.constData() + m_position, count, to);
        m_position += count;
        return count;
    }

    void Seek(qint64 position) override { m_position = qBound(qint64{0}, position, qint64{m_bytes.size()}); }

private:
    QByteArray m_bytes;
    qint64 m_position = 0;
};

} // namespace

FileError::FileError(const CString& path, const CString& reason)
    : std::runtime_error((ToNative(path) + u": "_s + reason).toStdString()), m_path(path), m_reason(reason)
{
}

FileError::~FileError() = default;

CString FileError::Message() const
{
    return ToNative(m_path) + u": "_s + m_reason;
}

OutputFile::~OutputFile() = default;
InputFile::~InputFile() = default;
FileSystem::~FileSystem() = default;

QByteArray FileSystem::ReadWhole(const CString& path)
{
    CString reason;
    std::optional<QByteArray> bytes = Read(path, &reason);
    if (!bytes) throw FileError(path, reason);
    return *std::move(bytes);
}

std::unique_ptr<InputFile> FileSystem::OpenForReading(const CString& path)
{
    return std::make_unique<HeldInputFile>(ReadWhole(path));
}

void FileSystem::WriteInPlace(const CString& path, const QByteArray& bytes, const QByteArray* former)
{
    const FileKind kind = KindOf(path);
    std::unique_ptr<OutputFile> file = OpenForWriting(path);
    if (kind == FileKind::Other) return WriteStream(*file, bytes);
    const qint64 size = file->Size();
    // A file that came there in this moment is somebody else's.
    const bool isNew = kind == FileKind::Missing && size == 0;
    QByteArray kept;
    if (size > 0) kept = former != nullptr && former->size() == size ? *former : ReadWhole(path);
    try {
        if (bytes.size() > size) file->Reserve(bytes.size());
        file->Write(bytes);
        file->Resize(bytes.size());
        file->Sync();
    } catch (...) {
        file.reset(); // some platforms remove no open file
        if (isNew)
            Remove(ThroughLinks(path));
        else
            PutBack(path, kept);
        throw;
    }
}

void FileSystem::Replace(const CString& path, const QByteArray& bytes)
{
    ReplacedFile file(path, *this);
    file.Write(bytes);
    file.Commit();
}

void FileSystem::PutBack(const CString& path, const QByteArray& former) noexcept
{
    try {
        if (Read(path, nullptr) == former) return;
        const std::unique_ptr<OutputFile> file = OpenForWriting(path);
        file->Write(former);
        file->Resize(former.size());
        file->Sync();
    } catch (...) {
        // The failure that brought us here is the one to report.
    }
}

bool FileSystem::Copy(const CString& from, const CString& to, CString* reason)
{
    const std::optional<QByteArray> bytes = Read(from, reason);
    if (!bytes) return false;
    try {
        WriteInPlace(to, *bytes);
        return true;
    } catch (const FileError& error) {
        if (reason != nullptr) *reason = error.Reason();
        return false;
    }
}

FileSystemProxy::FileSystemProxy(FileSystem& target) : m_target(target) {}

FileSystemProxy::~FileSystemProxy() = default;

bool FileSystemProxy::Exists(const CString& path)
{
    return m_target.Exists(path);
}

FileKind FileSystemProxy::KindOf(const CString& path)
{
    return m_target.KindOf(path);
}

CString FileSystemProxy::ThroughLinks(const CString& path)
{
    return m_target.ThroughLinks(path);
}

std::optional<QByteArray> FileSystemProxy::Read(const CString& path, CString* reason)
{
    return m_target.Read(path, reason);
}

std::optional<QByteArray> FileSystemProxy::ReadHead(const CString& path, qint64 length)
{
    return m_target.ReadHead(path, length);
}

std::unique_ptr<InputFile> FileSystemProxy::OpenForReading(const CString& path)
{
    return m_target.OpenForReading(path);
}

std::unique_ptr<OutputFile> FileSystemProxy::OpenForWriting(const CString& path)
{
    return m_target.OpenForWriting(path);
}

bool FileSystemProxy::Remove(const CString& path)
{
    return m_target.Remove(path);
}

bool FileSystemProxy::CreateFolder(const CString& path)
{
    return m_target.CreateFolder(path);
}

CStringArray FileSystemProxy::FindFiles(const CString& folder, const CString& extension)
{
    return m_target.FindFiles(folder, extension);
}

CStringArray FileSystemProxy::FindFolders(const CString& folder)
{
    return m_target.FindFolders(folder);
}

bool FileSystemProxy::Rename(const CString& from, const CString& to)
{
    return m_target.Rename(from, to);
}

bool FileSystemProxy::MoveOver(const CString& from, const CString& to)
{
    return m_target.MoveOver(from, to);
}

} // namespace platform
