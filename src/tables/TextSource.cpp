#include "tables/TextSource.h"

#include "tables/TableError.h"

#include <algorithm>

namespace tables {

using namespace Qt::StringLiterals;
using platform::Encoding;

namespace {

constexpr qsizetype ReadAtOnce = qsizetype{1} << 19;
/// A text in which no character ends for so long is none.
constexpr qsizetype LongestPiece = qsizetype{1} << 26;

/// The bytes of a UTF-8 text before a character that the end cuts off.
qsizetype WholeUtf8(QByteArrayView bytes)
{
    for (qsizetype back = 1; back <= std::min(qsizetype{3}, bytes.size()); ++back) {
        const auto byte = static_cast<unsigned char>(bytes[bytes.size() - back]);
        if (byte < 0x80) break;
        if (byte < 0xC0) continue;
        const qsizetype length = byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : 2;
        return length > back ? bytes.size() - back : bytes.size();
    }
    return bytes.size();
}

/// The same in GB18030, where bytes below 0x30 are never part of a longer character. None of the first
/// `known` bytes is below.
qsizetype WholeGb18030(QByteArrayView bytes, qsizetype known)
{
    qsizetype end = bytes.size();
    while (end > known && static_cast<unsigned char>(bytes[end - 1]) >= 0x30)
        --end;
    return end > known ? end : 0;
}

} // namespace

TextSource::TextSource(std::unique_ptr<platform::InputFile> file, const CString& path)
    : m_file(std::move(file)), m_path(path)
{
    Detect();
    m_file->Seek(0);
    m_rest.clear();
    m_read = 0;
}

void TextSource::Detect()
{
    QByteArray head(4, '\0');
    head.resize(m_file->Read(head.data(), head.size()));
    // Of the head alone only the mark counts.
    const Encoding guess = platform::GuessEncoding(head);
    if (guess == Encoding::Utf8Bom || guess == Encoding::Utf16Le || guess == Encoding::Utf16Be) {
        m_encoding = guess;
        return;
    }
    m_encoding = Encoding::Utf8;
    m_file->Seek(0);
    if (!IsUtf8()) m_encoding = Encoding::Gb18030;
}

bool TextSource::IsUtf8()
{
    for (;;) {
        const QByteArray piece = NextPiece();
        if (!piece.isValidUtf8()) return false;
        if (piece.isEmpty()) return true;
    }
}

QByteArray TextSource::NextPiece()
{
    QByteArray piece = m_rest;
    m_rest.clear();
    for (;;) {
        const qsizetype before = piece.size();
        piece.resize(before + ReadAtOnce);
        const qint64 read = m_file->Read(piece.data() + before, ReadAtOnce);
        m_read += read;
        piece.resize(before + read);
        if (read == 0) return piece;
        qsizetype whole = WholeCharacters(piece, before);
        if (whole == 0 && piece.size() < LongestPiece) continue;
        if (whole == 0) whole = piece.size();
        m_rest = piece.sliced(whole);
        piece.truncate(whole);
        return piece;
    }
}

/// The bytes before a character that the end cuts off, or may cut off. The first `known` bytes have been
/// looked at before, and no character ended in them.
qsizetype TextSource::WholeCharacters(QByteArrayView bytes, qsizetype known) const
{
    switch (m_encoding) {
    case Encoding::Utf8:
    case Encoding::Utf8Bom:
        return WholeUtf8(bytes);
    case Encoding::Utf16Le:
    case Encoding::Utf16Be: {
        // A pair of surrogates is not parted either.
        const qsizetype even = bytes.size() - bytes.size() % 2;
        if (even < 2) return even;
        const qsizetype high = even - (m_encoding == Encoding::Utf16Le ? 1 : 2);
        return (static_cast<unsigned char>(bytes[high]) & 0xFC) == 0xD8 ? even - 2 : even;
    }
    case Encoding::Gb18030:
        break;
    }
    return WholeGb18030(bytes, known);
}

bool TextSource::Append(CString& text)
{
    const QByteArray piece = NextPiece();
    if (piece.isEmpty()) return false;
    // Only at the start of the file is a mark a mark.
    const bool isLaterUtf8 = m_encoding == Encoding::Utf8Bom && !m_isFirst;
    const auto decoded = platform::Decode(piece, isLaterUtf8 ? Encoding::Utf8 : m_encoding);
    if (!decoded) Refuse(piece);
    m_isFirst = false;
    m_lines += std::count(decoded->begin(), decoded->end(), u'\n');
    text += *decoded;
    return true;
}

void TextSource::Refuse(const QByteArray& piece) const
{
    CString reason = u"既不是 UTF-8 文本，也不是 GB18030 文本"_s;
    qint64 line = m_lines + 1;
    if (m_encoding != Encoding::Utf16Le && m_encoding != Encoding::Utf16Be) {
        for (const QByteArray& text : piece.split('\n')) {
            if (!platform::Decode(text, m_encoding)) break;
            ++line;
        }
    }
    throw TableError(m_path, reason + u"（从第 %1 行起）"_s.arg(line));
}

double TextSource::Progress() const
{
    return static_cast<double>(m_read) / static_cast<double>(std::max(m_file->Size(), qint64{1}));
}

} // namespace tables
