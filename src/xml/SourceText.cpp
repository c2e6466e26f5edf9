#include "xml/DocumentData.h"

#include "xml/Characters.h"

#include <optional>

using namespace Qt::StringLiterals;

namespace xml::detail {

namespace {

/// Where the name of the encoding stands in a document's declaration, if it is declared.
struct DeclaredCharset
{
    qsizetype begin = 0;
    qsizetype end = 0;
};

/// Looks no further than the declaration, and takes it as it comes: the scanner judges it later.
std::optional<DeclaredCharset> FindCharset(const QByteArray& text)
{
    constexpr qsizetype Opening = 5;
    // Without the blank it is an instruction of another name, which declares nothing.
    if (!text.startsWith("<?xml") || text.size() == Opening || !IsBlank(text[Opening])) return std::nullopt;
    const qsizetype end = text.indexOf("?>");
    const qsizetype word = text.indexOf("encoding");
    if (end < 0 || word < 0 || word > end) return std::nullopt;
    qsizetype at = word + 8;
    const auto skipBlanks = [&] {
        while (at < end && IsBlank(text[at]))
            ++at;
    };
    skipBlanks();
    if (at >= end || text[at] != '=') return std::nullopt;
    ++at;
    skipBlanks();
    const char quote = at < end ? text[at] : '\0';
    if (quote != '"' && quote != '\'') return std::nullopt;
    const qsizetype close = text.indexOf(quote, at + 1);
    if (close < 0 || close > end) return std::nullopt;
    return DeclaredCharset{at + 1, close};
}

QByteArray CharsetName(const QByteArray& text)
{
    const auto found = FindCharset(text);
    return found ? text.mid(found->begin, found->end - found->begin).toUpper() : QByteArray();
}

bool IsChinese(const QByteArray& charset)
{
    return charset == "GB2312" || charset == "GBK" || charset == "GB18030";
}

QByteArray DecodeToUtf8(const QByteArray& bytes, platform::Encoding encoding)
{
    const std::optional<CString> text = platform::Decode(bytes, encoding);
    if (!text) throw Refusal{0, u"字节与文件的编码不符"};
    return text->toUtf8();
}

/// The name that is true of the bytes to be written. A byte order mark wins over a declaration that says
/// otherwise, and a text that no longer fits GB2312 or GBK needs GB18030: the declaration follows, or other
/// readers would refuse the file.
QByteArray CharsetToDeclare(const QByteArray& utf8, const SourceText& source)
{
    using platform::Encoding;
    switch (source.encoding) {
    case Encoding::Utf8:
    case Encoding::Utf8Bom:
        return source.charset.isEmpty() ? QByteArray() : "UTF-8";
    case Encoding::Utf16Le:
    case Encoding::Utf16Be: {
        const QByteArray ordered = source.encoding == Encoding::Utf16Le ? "UTF-16LE" : "UTF-16BE";
        return source.charset.isEmpty() || source.charset == ordered ? source.charset : "UTF-16";
    }
    case Encoding::Gb18030:
        break;
    }
    const bool fits =
        source.charset == "GB18030" || platform::FitsChineseCharset(CString::fromUtf8(utf8), source.charset);
    return fits ? source.charset : "GB18030";
}

} // namespace

SourceText DecodeSource(const QByteArray& bytes)
{
    SourceText source;
    if (bytes.startsWith("\xEF\xBB\xBF")) {
        source.encoding = platform::Encoding::Utf8Bom;
        source.utf8 = bytes.mid(3);
    } else if (bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF")) {
        source.encoding =
            bytes.startsWith("\xFF") ? platform::Encoding::Utf16Le : platform::Encoding::Utf16Be;
        source.utf8 = DecodeToUtf8(bytes, source.encoding);
    } else {
        const QByteArray charset = CharsetName(bytes);
        if (IsChinese(charset)) {
            source.encoding = platform::Encoding::Gb18030;
            source.utf8 = DecodeToUtf8(bytes, source.encoding);
        } else if (charset.isEmpty() || charset == "UTF-8") {
            source.utf8 = bytes;
        } else {
            throw Refusal{0, u"不支持文件声明的编码"};
        }
    }
    source.charset = CharsetName(source.utf8);
    return source;
}

QByteArray EncodeSource(QByteArray utf8, const SourceText& source)
{
    const QByteArray charset = CharsetToDeclare(utf8, source);
    if (charset != source.charset) {
        if (const auto found = FindCharset(utf8))
            utf8.replace(found->begin, found->end - found->begin, charset);
    }
    if (source.encoding == platform::Encoding::Utf8) return utf8;
    if (source.encoding == platform::Encoding::Utf8Bom) return "\xEF\xBB\xBF" + utf8;
    const std::optional<QByteArray> bytes = platform::Encode(CString::fromUtf8(utf8), source.encoding);
    if (!bytes) throw Error(u"文件的编码容纳不了其中的文字"_s);
    return *bytes;
}

} // namespace xml::detail
