#include "platform/Files.h"

#include "platform/Native.h"
#include "platform/Paths.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

/// Opens the file that `path` names, or says why not.
bool Open(QFile& file, const CString& path, QIODevice::OpenMode mode, CString& reason)
{
    if (path.isEmpty() || path.contains(QChar(u'\0'))) {
        reason = u"文件名无效"_s;
        return false;
    }
    file.setFileName(ToNative(path));
    if (file.open(mode | QIODevice::Unbuffered)) return true;
    reason = file.errorString();
    return false;
}

class RealOutputFile : public OutputFile
{
public:
    explicit RealOutputFile(const CString& path) : m_path(path)
    {
        CString reason;
        // Reading too is what keeps the old bytes: opened for writing alone, the file would be emptied.
        if (!Open(m_file, path, QIODevice::ReadWrite, reason)) throw FileError(path, reason);
    }

    qint64 Size() const override { return m_file.size(); }

    void Reserve(qint64 size) override
    {
        CString reason;
        if (!native::Reserve(m_file, size, reason)) throw FileError(m_path, reason);
    }

    void Write(const QByteArray& bytes) override
    {
        qint64 done = 0;
        while (done < bytes.size()) {
            const qint64 written = m_file.write(bytes.constData() + done, bytes.size() - done);
            if (written <= 0) Fail();
            done += written;
        }
    }

    void SeekToEnd() override
    {
        if (!m_file.seek(m_file.size())) Fail();
    }

    void Resize(qint64 size) override
    {
        if (!m_file.resize(size)) Fail();
    }

    void Sync() override
    {
        CString reason;
        if (!native::Sync(m_file, reason)) throw FileError(m_path, reason);
    }

private:
    [[noreturn]] void Fail() const { throw FileError(m_path, m_file.errorString()); }

    CString m_path;
    QFile m_file;
};

class RealInputFile : public InputFile
{
public:
    explicit RealInputFile(const CString& path) : m_path(path)
    {
        // Asked before the file is opened: the opening of a pipe would wait for somebody who writes into it.
        const QFileInfo info(ToNative(path));
        if (info.exists() && !info.isFile()) throw FileError(path, u"不是普通文件"_s);
        CString reason;
        if (!Open(m_file, path, QIODevice::ReadOnly, reason)) throw FileError(path, reason);
    }

    qint64 Size() const override { return m_file.size(); }

    qint64 Read(char* to, qint64 length) override
    {
        qint64 done = 0;
        while (done < length) {
            const qint64 read = m_file.read(to + done, length - done);
            if (read < 0) Fail();
            if (read == 0) break;
            done += read;
        }
        return done;
    }

    void Seek(qint64 position) override
    {
        if (!m_file.seek(position)) Fail();
    }

private:
    [[noreturn]] void Fail() const { throw FileError(m_path, m_file.errorString()); }

    CString m_path;
    QFile m_file;
};

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

/// Reads up to `length` bytes, or all when it is negative.
std::optional<QByteArray> ReadBytes(const CString& path, qint64 length, CString& reason)
{
    QFile file;
    if (!Open(file, path, QIODevice::ReadOnly, reason)) return std::nullopt;
    QByteArray bytes = length < 0 ? file.readAll() : file.read(length);
    if (file.error() == QFileDevice::NoError) return bytes;
    reason = file.errorString();
    return std::nullopt;
}

class PlatformFileSystem : public FileSystem
{
public:
    bool Exists(const CString& path) override { return QFileInfo::exists(ToNative(path)); }

    std::optional<QByteArray> Read(const CString& path, CString* reason) override
    {
        CString ignored;
        return ReadBytes(path, -1, reason != nullptr ? *reason : ignored);
    }

    std::optional<QByteArray> ReadHead(const CString& path, qint64 length) override
    {
        CString ignored;
        return ReadBytes(path, qMax(qint64{0}, length), ignored);
    }

    std::unique_ptr<InputFile> OpenForReading(const CString& path) override
    {
        return std::make_unique<RealInputFile>(path);
    }

    std::unique_ptr<OutputFile> OpenForWriting(const CString& path) override
    {
        return std::make_unique<RealOutputFile>(path);
    }

    bool Remove(const CString& path) override { return !path.isEmpty() && QFile::remove(ToNative(path)); }

    bool CreateFolder(const CString& path) override
    {
        return !path.isEmpty() && QDir().mkdir(ToNative(path));
    }

    CStringArray FindFiles(const CString& folder, const CString& extension) override
    {
        // An empty name would list the current folder.
        if (folder.isEmpty()) return {};
        const QDir directory(ToNative(folder));
        CStringArray names = directory.entryList(QDir::Files | QDir::Hidden, QDir::NoSort);
        names.removeIf([&](const CString& name) {
            return !name.endsWith(extension, Qt::CaseInsensitive) || !HasPathText(directory.filePath(name));
        });
        return names;
    }

    CStringArray FindFolders(const CString& folder) override
    {
        if (folder.isEmpty()) return {};
        const QDir directory(ToNative(folder));
        CStringArray names =
            directory.entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot, QDir::NoSort);
        names.removeIf([&](const CString& name) { return !HasPathText(directory.filePath(name)); });
        return names;
    }

    bool Rename(const CString& from, const CString& to) override
    {
        return !from.isEmpty() && !to.isEmpty() && native::Rename(ToNative(from), ToNative(to));
    }
};

/// The file system in force.
FileSystem*& Current()
{
    static FileSystem* current = &RealFileSystem();
    return current;
}

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

std::unique_ptr<InputFile> FileSystem::OpenForReading(const CString& path)
{
    CString reason;
    std::optional<QByteArray> bytes = Read(path, &reason);
    if (!bytes) throw FileError(path, reason);
    return std::make_unique<HeldInputFile>(*std::move(bytes));
}

void FileSystem::WriteInPlace(const CString& path, const QByteArray& bytes)
{
    const std::unique_ptr<OutputFile> file = OpenForWriting(path);
    if (bytes.size() > file->Size()) file->Reserve(bytes.size());
    file->Write(bytes);
    file->Resize(bytes.size());
    file->Sync();
}

void FileSystem::PutBack(const CString& path, const QByteArray& former) noexcept
{
    try {
        if (Read(path, nullptr) != former) WriteInPlace(path, former);
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

FileSystem& Files()
{
    return *Current();
}

FileSystem& RealFileSystem()
{
    static PlatformFileSystem fileSystem;
    return fileSystem;
}

ScopedFileSystem::ScopedFileSystem(FileSystem& replacement)
    : m_previous(std::exchange(Current(), &replacement))
{
}

ScopedFileSystem::~ScopedFileSystem()
{
    Current() = m_previous;
}

} // namespace platform
