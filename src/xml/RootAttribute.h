#pragma once

#include "platform/Export.h"
#include "platform/Text.h"

#include <QtCore/QByteArray>

namespace xml {

/// Sets one attribute of the document element of a file, leaving every other byte as it is; the file is
/// not written when the attribute already has that value. Only the head of the file is parsed, so that this
/// is cheap on large files. False, with the file untouched, when the file cannot be read or written, its head
/// is no XML, or name or value are not possible there; `reason`, if given, tells why. Never raises.
KTQDDE_EXPORT bool SetRootAttribute(const CString& path, const CString& name, const CString& value,
                                    CString* reason = nullptr);

/// The bytes of a file with one attribute of its document element set, all else as it is. Raises `Error`,
/// with the reason in words, for bytes whose head is no XML, and for a name or a value that is not possible
/// there.
KTQDDE_EXPORT QByteArray WithRootAttribute(const QByteArray& bytes, const CString& name,
                                           const CString& value);

} // namespace xml
