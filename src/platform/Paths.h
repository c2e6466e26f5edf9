#pragma once

#include "platform/Export.h"
#include "platform/Text.h"

/// Path texts of this system separate folders with backslashes, whatever the platform; they are cut and
/// joined as plain text. They become native paths only where a file is touched, and native paths become such
/// texts where they come in (command line, file chooser).
namespace platform {

/// The native form of a path text: every backslash becomes the platform's separator.
KTQDDE_EXPORT QString ToNative(const CString& pathText);

/// The path text of a native path: absolute and clean, every separator a backslash. Empty stays empty.
/// A native name that itself holds a backslash (legal outside Windows) has no path text; see `HasPathText`.
KTQDDE_EXPORT CString FromNative(const QString& nativePath);

/// Whether `FromNative` followed by `ToNative` leads back to the same file.
KTQDDE_EXPORT bool HasPathText(const QString& nativePath);

/// What stands before the last backslash, without it; empty when there is none.
KTQDDE_EXPORT CString FolderOf(const CString& pathText);

/// What stands behind the last backslash; all of it when there is none.
KTQDDE_EXPORT CString FileNameOf(const CString& pathText);

/// `fileName` up to, not including, its last full stop; empty when there is none. "a.b.xml" gives "a.b".
/// A name without a full stop becoming empty is how a configuration name is cut: the caller relies on it.
KTQDDE_EXPORT CString BeforeLastStop(const CString& fileName);

/// Whether a file of that name (no folder) would be a device on Windows: a device's name in any letter case
/// and with any extension.
KTQDDE_EXPORT bool IsDeviceName(const CString& fileName);

/// Whether no file name may hold the character on one of the systems between which projects travel:
/// \ / : * ? " < > |. Control characters are told apart from these by whoever minds them.
KTQDDE_EXPORT bool IsForbiddenInFileNames(QChar character);

/// Whether a file name is longer than file systems hold: 255 bytes in UTF-8, in which a Chinese character has
/// three.
KTQDDE_EXPORT bool IsTooLongFileName(const CString& fileName);

} // namespace platform
