#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QFile>
#include <QtCore/QString>

#include <optional>

/// What differs between operating systems, and nothing else. NativePosix.cpp and NativeWindows.cpp implement
/// it.
namespace platform::native {

/// Opens a pipe or a device for writing alone, without waiting for a reader: one that could be read here,
/// too, would have this process for a reader, and never tell that the other one has gone. `file` has its
/// name. False, with a reason, also for a pipe that nobody reads.
bool OpenStream(QFile& file, QString& reason);

/// Reserves room for `size` bytes of an open file without changing its length. False, with a reason, when
/// there is no room; true when there is or when the file system cannot tell.
bool Reserve(QFile& file, qint64 size, QString& reason);

/// Hands the written bytes to the disk.
bool Sync(QFile& file, QString& reason);

/// Renames a file within its folder, never over another one, and hands the folder to the disk.
bool Rename(const QString& from, const QString& to);

/// Puts a file into the place of another in its folder, with owner and permissions of that one, and hands the
/// folder to the disk. False, with the other as it was, when something of it would be lost.
bool MoveOver(const QString& from, const QString& to);

/// Whether a person watches standard error.
bool ErrIsTerminal();

/// Whether standard input comes from a person.
bool InIsTerminal();

/// Strict conversion between UTF-16 text and "GB18030", "GBK" or "GB2312"; nothing when a character has no
/// form.
std::optional<QString> DecodeChinese(const QByteArray& bytes, const char* charset);
std::optional<QByteArray> EncodeChinese(const QString& text, const char* charset);

/// The folder of the file that this code was loaded from: of the module, or of a program that has the module
/// in itself. Empty where it cannot be told.
QString ModuleFolder();

/// Makes standard streams and file names UTF-8 for this process, and writing to a closed pipe an error that
/// is reported instead of one that ends the process.
void UseUtf8();

} // namespace platform::native
