#pragma once

#include "platform/Export.h"
#include "platform/Text.h"

#include <QtCore/QByteArray>

#include <optional>
#include <vector>

/// The binary form in which a finished rule file is handed on: fields of a tag, a length and as many bytes,
/// one behind the other. Tags and lengths are signed 32-bit little-endian integers; texts are UTF-8 without
/// terminator. The order is fixed:
///
/// | tag  | content                                                    |
/// |------|------------------------------------------------------------|
/// | 1001 | "5", a constant of the format                              |
/// | 1011 | version of the program                                     |
/// | 1002 | mode word                                                  |
/// | 1003 | bill library file; empty in quota mode                     |
/// | 1004 | quota library file                                         |
/// | 1000 | the rule file, byte for byte                               |
namespace store {

struct WrappedFile
{
    CString format;     ///< tag 1001
    CString version;    ///< tag 1011
    CString mode;       ///< tag 1002: "清单模式" or "定额模式"
    CString billFile;   ///< tag 1003
    CString quotaFile;  ///< tag 1004
    QByteArray content; ///< tag 1000
};

/// The fields as they stand in the file, each a tag, a length and the bytes. A caller writes them in this
/// order. The content must be shorter than 2 GiB.
KTQDDE_EXPORT std::vector<QByteArray> ComposeFields(const WrappedFile& file);

/// Takes a wrapped file apart; nothing, with a reason, when it is truncated, has other tags, a negative or
/// too large length, text that is no UTF-8, or bytes behind the last field.
KTQDDE_EXPORT std::optional<WrappedFile> ParseWrapped(const QByteArray& bytes, CString* reason = nullptr);

} // namespace store
