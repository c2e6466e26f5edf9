#include "platform/Native.h"

#include <QtCore/QFileInfo>
#include <QtCore/QScopeGuard>
#include <QtCore/QSysInfo>

#include <cerrno>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include <dlfcn.h>
#include <fcntl.h>
#include <iconv.h>
#include <langinfo.h>
#include <sys/stat.h>
#include <unistd.h>
#if defined(__linux__)
#include <sys/xattr.h>
#endif

using namespace Qt::StringLiterals;

namespace platform::native {

namespace {

constexpr const char* Utf16Name = QSysInfo::ByteOrder == QSysInfo::LittleEndian ? "UTF-16LE" : "UTF-16BE";

/// Converts all of `bytes`; nothing on an invalid or incomplete sequence or an unknown charset.
std::optional<QByteArray> Convert(QByteArray bytes, const char* from, const char* to)
{
    iconv_t converter = iconv_open(to, from);
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the error value of the interface is defined so.
    if (converter == reinterpret_cast<iconv_t>(-1)) return std::nullopt;
    const auto guard = qScopeGuard([&converter] { iconv_close(converter); });

    char* in = bytes.data();
    auto inLeft = static_cast<std::size_t>(bytes.size());
    QByteArray result;
    char buffer[16384];
    for (;;) {
        char* out = buffer;
        std::size_t outLeft = sizeof buffer;
        const bool finished = iconv(converter, &in, &inLeft, &out, &outLeft) != static_cast<std::size_t>(-1);
        const bool full = !finished && errno == E2BIG;
        result.append(buffer, out - buffer);
        if (finished) return result;
        if (!full) return std::nullopt;
    }
}

/// Whether the file system keeps more of a file than its bytes, owner and mode: access lists, labels.
bool HasMarks(const char* path)
{
#if defined(__linux__)
    return listxattr(path, nullptr, 0) > 0;
#else
    Q_UNUSED(path);
    return false;
#endif
}

/// Gives a file the owner and mode of another that has no second name.
bool TakeOwnerAndMode(const char* from, const char* to)
{
    struct stat made = {};
    struct stat old = {};
    if (stat(from, &made) != 0 || lstat(to, &old) != 0) return false;
    if (!S_ISREG(old.st_mode) || old.st_nlink != 1 || HasMarks(to)) return false;
    const bool sameOwner = made.st_uid == old.st_uid && made.st_gid == old.st_gid;
    if (!sameOwner && chown(from, old.st_uid, old.st_gid) != 0) return false;
    constexpr mode_t Permissions = 07777;
    return chmod(from, old.st_mode & Permissions) == 0;
}

/// Hands the names in a file's folder to the disk.
void SyncFolderOf(const QString& file)
{
    const int folder = open(QFile::encodeName(QFileInfo(file).path()).constData(), O_RDONLY | O_CLOEXEC);
    if (folder < 0) return;
    fsync(folder);
    close(folder);
}

/// Whether `error` says that the disk, the quota or the file system's largest file is used up.
bool MeansNoRoom(int error)
{
    return error == ENOSPC || error == EDQUOT || error == EFBIG;
}

} // namespace

bool OpenStream(QFile& file, QString& reason)
{
    const QByteArray name = QFile::encodeName(file.fileName());
    const int stream = open(name.constData(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (stream < 0) {
        const int error = errno;
        struct stat found = {};
        const bool isPipe = stat(name.constData(), &found) == 0 && S_ISFIFO(found.st_mode);
        reason = error == ENXIO && isPipe ? u"没有程序在读这个管道"_s
                                          : QString::fromLocal8Bit(std::strerror(error));
        return false;
    }
    fcntl(stream, F_SETFL, fcntl(stream, F_GETFL) & ~O_NONBLOCK); // writing waits for the reader
    if (file.open(stream, QIODevice::WriteOnly | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle))
        return true;
    reason = file.errorString();
    close(stream);
    return false;
}

bool Reserve(QFile& file, qint64 size, QString& reason)
{
#if defined(__linux__)
    if (size <= file.size()) return true;
    int result = 0;
    do {
        result = fallocate(file.handle(), FALLOC_FL_KEEP_SIZE, 0, size);
    } while (result != 0 && errno == EINTR);
    if (result == 0 || !MeansNoRoom(errno)) return true;
    reason = QString::fromLocal8Bit(std::strerror(errno));
    return false;
#else
    Q_UNUSED(file);
    Q_UNUSED(size);
    Q_UNUSED(reason);
    return true;
#endif
}

bool Sync(QFile& file, QString& reason)
{
    int result = 0;
    do {
        result = fsync(file.handle());
    } while (result != 0 && errno == EINTR);
    // Pipes, devices and some network file systems cannot sync at all.
    if (result == 0 || errno == EINVAL || errno == ENOTSUP) return true;
    reason = QString::fromLocal8Bit(std::strerror(errno));
    return false;
}

bool Rename(const QString& from, const QString& to)
{
    const QByteArray source = QFile::encodeName(from);
    const QByteArray target = QFile::encodeName(to);
    // A second name is refused where one stands, which a renaming is not.
    if (link(source.constData(), target.constData()) == 0) {
        unlink(source.constData());
    } else if (errno == EEXIST || access(target.constData(), F_OK) == 0 ||
               std::rename(source.constData(), target.constData()) != 0) {
        return false;
    }
    SyncFolderOf(to);
    return true;
}

bool MoveOver(const QString& from, const QString& to)
{
    const QByteArray source = QFile::encodeName(from);
    const QByteArray target = QFile::encodeName(to);
    if (!TakeOwnerAndMode(source.constData(), target.constData())) return false;
    if (std::rename(source.constData(), target.constData()) != 0) return false;
    SyncFolderOf(to);
    return true;
}

bool ErrIsTerminal()
{
    return isatty(STDERR_FILENO) != 0;
}

bool InIsTerminal()
{
    return isatty(STDIN_FILENO) != 0;
}

std::optional<QString> DecodeChinese(const QByteArray& bytes, const char* charset)
{
    const std::optional<QByteArray> utf16 = Convert(bytes, charset, Utf16Name);
    if (!utf16) return std::nullopt;
    QString text(utf16->size() / 2, Qt::Uninitialized);
    std::memcpy(text.data(), utf16->constData(), static_cast<std::size_t>(utf16->size()));
    return text;
}

std::optional<QByteArray> EncodeChinese(const QString& text, const char* charset)
{
    const QByteArray utf16(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
    return Convert(utf16, Utf16Name, charset);
}

QString ModuleFolder()
{
    static const char inThisFile = 0;
    Dl_info found = {};
    if (dladdr(&inThisFile, &found) == 0 || found.dli_fname == nullptr) return {};
    const QString file = QFile::decodeName(found.dli_fname);
    // A program started by its bare name is called by that here, which says nothing about its folder.
    return file.contains(u'/') ? QFileInfo(file).absolutePath() : QString();
}

void UseUtf8()
{
    std::setlocale(LC_CTYPE, "");
    if (std::string_view(nl_langinfo(CODESET)) != "UTF-8") {
        setenv("LC_ALL", "C.UTF-8", 1);
        std::setlocale(LC_CTYPE, "");
    }
    // A closed pipe and a file beyond the size limit are then refused writes, which are reported.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

} // namespace platform::native
