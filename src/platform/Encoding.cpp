#include "platform/Encoding.h"

#include "platform/Native.h"

#include <QtCore/QStringDecoder>
#include <QtCore/QtEndian>

#include <algorithm>

namespace platform {

namespace {

QByteArray MarkOf(Encoding encoding)
{
    switch (encoding) {
    case Encoding::Utf8Bom:
        return QByteArrayLiteral("\xEF\xBB\xBF");
    case Encoding::Utf16Le:
        return QByteArrayLiteral("\xFF\xFE");
    case Encoding::Utf16Be:
        return QByteArrayLiteral("\xFE\xFF");
    case Encoding::Utf8:
    case Encoding::Gb18030:
        break;
    }
    return {};
}

std::optional<CString> DecodeUtf8(QByteArrayView bytes)
{
    // Stateless: a sequence that the end cuts off is an error. A mark inside the text stays a character.
    using Flag = QStringConverter::Flag;
    QStringDecoder decoder(QStringConverter::Utf8, Flag::Stateless | Flag::ConvertInitialBom);
    CString text = decoder.decode(bytes);
    if (decoder.hasError()) return std::nullopt;
    return text;
}

std::optional<CString> DecodeUtf16(QByteArrayView bytes, bool bigEndian)
{
    if (bytes.size() % 2 != 0) return std::nullopt;
    CString text(bytes.size() / 2, Qt::Uninitialized);
    if (bigEndian)
        qFromBigEndian<char16_t>(bytes.data(), text.size(), text.data());
    else
        qFromLittleEndian<char16_t>(bytes.data(), text.size(), text.data());
    if (!text.isValidUtf16()) return std::nullopt;
    return text;
}

QByteArray EncodeUtf16(const CString& text, bool bigEndian)
{
    QByteArray bytes(text.size() * 2, Qt::Uninitialized);
    if (bigEndian)
        qToBigEndian<char16_t>(text.utf16(), text.size(), bytes.data());
    else
        qToLittleEndian<char16_t>(text.utf16(), text.size(), bytes.data());
    return bytes;
}

/// Whether `bytes`, a GBK text, stays within the two-byte rows of GB2312.
bool IsGb2312(const QByteArray& bytes)
{
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        const auto lead = static_cast<unsigned char>(bytes[i]);
        if (lead < 0x80) continue;
        if (lead < 0xA1 || lead > 0xF7 || ++i == bytes.size()) return false;
        if (static_cast<unsigned char>(bytes[i]) < 0xA1) return false;
    }
    return true;
}

} // namespace

std::optional<CString> Decode(const QByteArray& bytes, Encoding encoding)
{
    const QByteArray mark = MarkOf(encoding);
    const QByteArrayView rest = QByteArrayView(bytes).sliced(bytes.startsWith(mark) ? mark.size() : 0);
    switch (encoding) {
    case Encoding::Utf8:
    case Encoding::Utf8Bom:
        return DecodeUtf8(rest);
    case Encoding::Utf16Le:
        return DecodeUtf16(rest, false);
    case Encoding::Utf16Be:
        return DecodeUtf16(rest, true);
    case Encoding::Gb18030:
        break;
    }
    return native::DecodeChinese(bytes, "GB18030");
}

CString FromUtf8(QByteArrayView bytes)
{
    const QByteArrayView mark("\xEF\xBB\xBF");
    QByteArrayView rest = bytes;
    while (rest.startsWith(mark))
        rest = rest.sliced(mark.size());
    // The toolkit takes one mark off, so it gets what follows all of them.
    if (rest.size() == bytes.size()) return CString::fromUtf8(bytes);
    return CString((bytes.size() - rest.size()) / mark.size(), QChar(QChar::ByteOrderMark)) +
           CString::fromUtf8(rest);
}

std::optional<QByteArray> Encode(const CString& text, Encoding encoding)
{
    if (!text.isValidUtf16()) return std::nullopt;
    switch (encoding) {
    case Encoding::Utf8:
    case Encoding::Utf8Bom:
        return MarkOf(encoding) + text.toUtf8();
    case Encoding::Utf16Le:
        return MarkOf(encoding) + EncodeUtf16(text, false);
    case Encoding::Utf16Be:
        return MarkOf(encoding) + EncodeUtf16(text, true);
    case Encoding::Gb18030:
        break;
    }
    return native::EncodeChinese(text, "GB18030");
}

bool FitsChineseCharset(const CString& text, const QByteArray& charset)
{
    if (!text.isValidUtf16()) return false;
    const QByteArray name = charset.toUpper();
    if (name == "GB18030") return true;
    if (name != "GBK" && name != "GB2312") return false;
    const std::optional<QByteArray> bytes = native::EncodeChinese(text, name.constData());
    return bytes.has_value() && (name == "GBK" || IsGb2312(*bytes));
}

Encoding GuessEncoding(const QByteArray& bytes)
{
    constexpr Encoding marked[] = {Encoding::Utf8Bom, Encoding::Utf16Le, Encoding::Utf16Be};
    const auto found = std::find_if(std::begin(marked), std::end(marked),
                                    [&](Encoding encoding) { return bytes.startsWith(MarkOf(encoding)); });
    if (found != std::end(marked)) return *found;
    return DecodeUtf8(bytes).has_value() ? Encoding::Utf8 : Encoding::Gb18030;
}

} // namespace platform
