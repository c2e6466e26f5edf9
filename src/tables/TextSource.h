#pragma once

#include "platform/Encoding.h"
#include "platform/Files.h"
#include "platform/Text.h"

#include <memory>

namespace tables {

/// The text of a file piece by piece, whatever the encoding: a byte order mark decides; else UTF-8 if all of
/// the file is valid UTF-8; else GB18030.
class TextSource
{
public:
    /// Reads through the file once if it has no mark. Raises `platform::FileError`.
    TextSource(std::unique_ptr<platform::InputFile> file, const CString& path);

    /// Adds the next piece to `text`; false at the end. Raises `platform::FileError`, and `TableError` for
    /// bytes that do not decode.
    bool Append(CString& text);
    /// How much of the file has been given, from 0 to 1.
    double Progress() const;

private:
    void Detect();
    bool IsUtf8();
    QByteArray NextPiece();
    qsizetype WholeCharacters(QByteArrayView bytes, qsizetype known) const;
    [[noreturn]] void Refuse(const QByteArray& piece) const;

    std::unique_ptr<platform::InputFile> m_file;
    CString m_path;
    platform::Encoding m_encoding = platform::Encoding::Utf8;
    QByteArray m_rest; ///< bytes of a character whose end has not been read yet
    qint64 m_read = 0;
    qint64 m_lines = 0; ///< line ends in what has been given
    bool m_isFirst = true;
};

} // namespace tables
