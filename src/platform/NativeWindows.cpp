#include "platform/Native.h"

#include <QtCore/QByteArrayView>
#include <QtCore/QFileInfo>

#include <array>
#include <cstdio>

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX // some standard libraries define it
#define NOMINMAX
#endif
#include <windows.h>

#include <fcntl.h>
#include <io.h>

namespace platform::native {

namespace {

constexpr UINT Gb18030CodePage = 54936;
constexpr UINT GbkCodePage = 936;
/// Of a path with all its marks, in characters, the end included.
constexpr DWORD LongestPath = 32768;
/// ERROR_DISK_QUOTA_EXCEEDED, which not every version of the system's headers has.
constexpr DWORD DiskQuotaExceeded = 1295;

HANDLE HandleOf(QFile& file)
{
    return reinterpret_cast<HANDLE>(_get_osfhandle(file.handle()));
}

/// GB2312 is a part of GBK, so that its texts convert by the code page of GBK.
UINT CodePageOf(const char* charset)
{
    return QByteArrayView(charset) == QByteArrayView("GB18030") ? Gb18030CodePage : GbkCodePage;
}

bool MeansNoRoom(DWORD error)
{
    return error == ERROR_DISK_FULL || error == DiskQuotaExceeded;
}

/// Encodes into `out`, or only measures when `size` is 0. Gives the length, or 0 when a character has no
/// form.
int EncodeInto(UINT codePage, const QString& text, char* out, int size)
{
    const auto* wide = reinterpret_cast<const wchar_t*>(text.utf16());
    const int length = static_cast<int>(text.size());
    // GB18030 has a form for everything and takes no flag but this one.
    if (codePage == Gb18030CodePage)
        return WideCharToMultiByte(codePage, WC_ERR_INVALID_CHARS, wide, length, out, size, nullptr, nullptr);
    BOOL replaced = FALSE;
    const int written =
        WideCharToMultiByte(codePage, WC_NO_BEST_FIT_CHARS, wide, length, out, size, nullptr, &replaced);
    return replaced ? 0 : written;
}

} // namespace

bool OpenStream(QFile& file, QString& reason)
{
    if (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) return true;
    reason = file.errorString();
    return false;
}

bool Reserve(QFile& file, qint64 size, QString& reason)
{
    // An allocation below the file's length would cut the file.
    if (size <= file.size()) return true;
    FILE_ALLOCATION_INFO info = {};
    info.AllocationSize.QuadPart = size;
    if (SetFileInformationByHandle(HandleOf(file), FileAllocationInfo, &info, sizeof info)) return true;
    const DWORD error = GetLastError();
    if (!MeansNoRoom(error)) return true;
    reason = qt_error_string(static_cast<int>(error));
    return false;
}

bool Sync(QFile& file, QString& reason)
{
    if (FlushFileBuffers(HandleOf(file))) return true;
    const DWORD error = GetLastError();
    // Pipes, devices and some network drives cannot sync at all.
    if (error == ERROR_INVALID_FUNCTION || error == ERROR_NOT_SUPPORTED || error == ERROR_INVALID_HANDLE)
        return true;
    reason = qt_error_string(static_cast<int>(error));
    return false;
}

bool Rename(const QString& from, const QString& to)
{
    return MoveFileExW(reinterpret_cast<const wchar_t*>(from.utf16()),
                       reinterpret_cast<const wchar_t*>(to.utf16()), MOVEFILE_WRITE_THROUGH) != FALSE;
}

bool MoveOver(const QString& from, const QString& to)
{
    // The system takes over attributes, access list and streams.
    return ReplaceFileW(reinterpret_cast<const wchar_t*>(to.utf16()),
                        reinterpret_cast<const wchar_t*>(from.utf16()), nullptr, 0, nullptr,
                        nullptr) != FALSE;
}

bool ErrIsTerminal()
{
    return _isatty(_fileno(stderr)) != 0;
}

bool InIsTerminal()
{
    return _isatty(_fileno(stdin)) != 0;
}

std::optional<QString> DecodeChinese(const QByteArray& bytes, const char* charset)
{
    if (bytes.isEmpty()) return QString();
    const UINT codePage = CodePageOf(charset);
    const int length = static_cast<int>(bytes.size());
    const int needed =
        MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, bytes.constData(), length, nullptr, 0);
    if (needed == 0) return std::nullopt;
    QString text(needed, Qt::Uninitialized);
    MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, bytes.constData(), length,
                        reinterpret_cast<wchar_t*>(text.data()), needed);
    return text;
}

std::optional<QByteArray> EncodeChinese(const QString& text, const char* charset)
{
    if (text.isEmpty()) return QByteArray();
    const UINT codePage = CodePageOf(charset);
    const int needed = EncodeInto(codePage, text, nullptr, 0);
    if (needed == 0) return std::nullopt;
    QByteArray bytes(needed, Qt::Uninitialized);
    EncodeInto(codePage, text, bytes.data(), needed);
    return bytes;
}

QString ModuleFolder()
{
    static const wchar_t inThisFile = 0;
    HMODULE module = nullptr;
    if (!GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                                GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                            &inThisFile, &module))
        return {};
    std::array<wchar_t, LongestPath> path = {};
    const DWORD length = GetModuleFileNameW(module, path.data(), LongestPath);
    // A path that was cut gives the whole length.
    if (length == 0 || length == LongestPath) return {};
    return QFileInfo(QString::fromWCharArray(path.data(), static_cast<int>(length))).absolutePath();
}

void UseUtf8()
{
    SetConsoleOutputCP(CP_UTF8);
    // Line ends are written as they stand.
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
}

} // namespace platform::native
