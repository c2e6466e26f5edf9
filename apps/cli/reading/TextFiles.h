#pragma once

#include "platform/Text.h"

#include <QtCore/QByteArray>

namespace cli {

/// The lines of a text file, whatever its encoding. Raise `platform::FileError` when it cannot be read and
/// `Refusal` when it is no text. `name` is what the refusal calls the bytes.
CStringArray LinesOf(const CString& path);
CString TextOf(const QByteArray& bytes, const CString& name);

} // namespace cli
