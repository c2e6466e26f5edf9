#include "platform/Files.h"

#include "platform/Apart.h"
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

FileKind KindOfNative(const QString& path)
{
    const QFileInfo info(path);
    if (!info.exists()) return FileKind::Missing;
    if (info.isDir()) return FileKind::Folder;
    return info.isFile() ? FileKind::File : FileKind::Other;
}

class RealOutputFile : public OutputFile
{
public:
    explicit RealOutputFile(const CString& path) : m_path(path)
    {
        m_file.setFileName(ToNative(path));
        CString reason;
        // Reading too is what keeps the old bytes: opened for writing alone, the file would be emptied.
        const bool isOpen = KindOfNative(m_file.fileName()) == FileKind::Other
                                ? native::OpenStream(m_file, reason)
                                : Open(m_file, path, QIODevice::ReadWrite, reason);
        if (!isOpen) throw FileError(path, reason);
    }

    qint64 Size() const override { return m_file.size(); }

    void Reserve(qint64 size) override
    {
        CString reason;
        if (!native::Reserve(m_file, size, reason)) throw FileError(m_path, reason);
    }

    void Write(const QByteArray& bytes) override
    {
        RunApart(bytes.size(), [&] {
            qint64 done = 0;
            while (done < bytes.size()) {
                const qint64 written = m_file.write(bytes.constData() + done, bytes.size() - done);
                if (written <= 0) Fail();
                done += written;
            }
        });
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
        RunApart(m_file.size(), [&] {
            CString reason;
            if (!native::Sync(m_file, reason)) throw FileError(m_path, reason);
        });
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
        const FileKind kind = KindOfNative(ToNative(path));
        if (kind == FileKind::Folder || kind == FileKind::Other) throw FileError(path, u"不是普通文件"_s);
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

/// Reads up to `length` bytes, or all when it is negative.
std::optional<QByteArray> ReadBytes(const CString& path, qint64 length, CString& reason)
{
    if (KindOfNative(ToNative(path)) == FileKind::Other) {
        reason = u"不是普通文件（设备或管道），不能读取"_s;
        return std::nullopt;
    }
    QFile file;
    if (!Open(file, path, QIODevice::ReadOnly, reason)) return std::nullopt;
    QByteArray bytes;
    RunApart(length < 0 ? file.size() : length,
             [&] { bytes = length < 0 ? file.readAll() : file.read(length); });
    if (file.error() == QFileDevice::NoError) return bytes;
    reason = file.errorString();
    return std::nullopt;
}

class PlatformFileSystem : public FileSystem
{
public:
    bool Exists(const CString& path) override { return QFileInfo::exists(ToNative(path)); }

    FileKind KindOf(const CString& path) override { return KindOfNative(ToNative(path)); }

    CString ThroughLinks(const CString& path) override
    {
        constexpr int MostLinks = 40; // as many as systems follow
        QFileInfo info(ToNative(path));
        for (int i = 0; i < MostLinks && info.isSymLink(); ++i) {
            const QFileInfo next(info.symLinkTarget());
            // The link of an open pipe or device names something that is no path.
            if (info.exists() && !next.exists()) break;
            info = next;
        }
        const QString target = info.filePath();
        return target == ToNative(path) || !HasPathText(target) ? path : FromNative(target);
    }

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

    bool MoveOver(const CString& from, const CString& to) override
    {
        return !from.isEmpty() && !to.isEmpty() && native::MoveOver(ToNative(from), ToNative(to));
    }
};

/// The file system in force.
FileSystem*& Current()
{
    static FileSystem* current = &RealFileSystem();
    return current;
}

} // namespace

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
