#pragma once

#include "platform/Export.h"
#include "platform/Text.h"

#include <QtCore/QByteArray>
#include <QtCore/QByteArrayView>

#include <optional>

/// Text encodings in files that come from elsewhere. New files are always UTF-8.
namespace platform {

enum class Encoding {
    Utf8,    ///< without byte order mark
    Utf8Bom, ///< with byte order mark EF BB BF
    Utf16Le, ///< with byte order mark FF FE
    Utf16Be, ///< with byte order mark FE FF
    Gb18030, ///< also serves GB2312 and GBK, of which it is a superset
};

/// `bytes` as text; nothing when they do not decode strictly. The byte order mark that the encoding names is
/// taken off, and may be missing; under `Utf8` a mark stays as the character U+FEFF.
KTQDDE_EXPORT std::optional<CString> Decode(const QByteArray& bytes, Encoding encoding);

/// Valid UTF-8 as text, with every character that it holds: U+FEFF at the beginning is one of them, not a
/// mark that would be taken off. Bytes that are no UTF-8 become U+FFFD.
KTQDDE_EXPORT CString FromUtf8(QByteArrayView bytes);

/// `text` as bytes, with the byte order mark that the encoding names; nothing when it does not encode (an
/// unpaired surrogate).
KTQDDE_EXPORT std::optional<QByteArray> Encode(const CString& text, Encoding encoding);

/// Whether `text` can be written in the narrower encoding of that name, "GB2312" or "GBK" (any letter case).
/// GB18030 can write everything.
KTQDDE_EXPORT bool FitsChineseCharset(const CString& text, const QByteArray& charset);

/// The encoding of a plain text file: a byte order mark decides; else UTF-8 if the bytes are valid UTF-8;
/// else GB18030.
KTQDDE_EXPORT Encoding GuessEncoding(const QByteArray& bytes);

} // namespace platform
