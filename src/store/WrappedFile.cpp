#include "store/WrappedFile.h"

#include "platform/Encoding.h"

#include <QtCore/QtEndian>

#include <array>

using namespace Qt::StringLiterals;

namespace store {

namespace {

constexpr qsizetype IntegerSize = 4;
constexpr std::array<qint32, 5> TextTags{1001, 1011, 1002, 1003, 1004};
constexpr std::array<CString WrappedFile::*, 5> TextFields{&WrappedFile::format, &WrappedFile::version,
                                                           &WrappedFile::mode, &WrappedFile::billFile,
                                                           &WrappedFile::quotaFile};
constexpr qint32 ContentTag = 1000;

QByteArray Integer(qint32 value)
{
    QByteArray bytes(IntegerSize, Qt::Uninitialized);
    qToLittleEndian(value, bytes.data());
    return bytes;
}

QByteArray Field(qint32 tag, const QByteArray& bytes)
{
    return Integer(tag) + Integer(static_cast<qint32>(bytes.size())) + bytes;
}

/// Walks over the fields of a wrapped file, remembering why it had to stop.
class Reader
{
public:
    explicit Reader(const QByteArray& bytes) : m_bytes(bytes) {}

    /// The bytes of the next field if it has that tag.
    std::optional<QByteArray> Next(qint32 tag)
    {
        if (m_bytes.size() - m_position < 2 * IntegerSize) return Stop(tag, u"文件在此之前结束"_s);
        if (TakeInteger() != tag) return Stop(tag, u"标签不符"_s);
        const qint32 length = TakeInteger();
        if (length < 0 || length > m_bytes.size() - m_position) return Stop(tag, u"长度无效"_s);
        const QByteArray field = m_bytes.mid(m_position, length);
        m_position += length;
        return field;
    }

    bool AtEnd() const { return m_position == m_bytes.size(); }
    CString Reason() const { return m_reason; }
    std::nullopt_t Stop(qint32 tag, const CString& why)
    {
        m_reason = u"字段 %1：%2"_s.arg(tag).arg(why);
        return std::nullopt;
    }

private:
    qint32 TakeInteger()
    {
        quint32 value = 0;
        for (int byte = 0; byte < IntegerSize; ++byte)
            value |= static_cast<quint32>(static_cast<unsigned char>(m_bytes.at(m_position++))) << (8 * byte);
        return static_cast<qint32>(value);
    }

    const QByteArray& m_bytes;
    qsizetype m_position = 0;
    CString m_reason;
};

std::optional<WrappedFile> Parse(Reader& reader)
{
    WrappedFile file;
    for (std::size_t i = 0; i < TextTags.size(); ++i) {
        const auto bytes = reader.Next(TextTags[i]);
        if (!bytes) return std::nullopt;
        const auto text = platform::Decode(*bytes, platform::Encoding::Utf8);
        if (!text) return reader.Stop(TextTags[i], u"文字不是 UTF-8"_s);
        file.*TextFields[i] = *text;
    }
    const auto content = reader.Next(ContentTag);
    if (!content) return std::nullopt;
    if (!reader.AtEnd()) return reader.Stop(ContentTag, u"其后还有多余的内容"_s);
    file.content = *content;
    return file;
}

} // namespace

std::vector<QByteArray> ComposeFields(const WrappedFile& file)
{
    std::vector<QByteArray> fields;
    for (std::size_t i = 0; i < TextTags.size(); ++i)
        fields.push_back(Field(TextTags[i], (file.*TextFields[i]).toUtf8()));
    fields.push_back(Field(ContentTag, file.content));
    return fields;
}

std::optional<WrappedFile> ParseWrapped(const QByteArray& bytes, CString* reason)
{
    Reader reader(bytes);
    std::optional<WrappedFile> file = Parse(reader);
    if (!file && reason != nullptr) *reason = reader.Reason();
    return file;
}

} // namespace store
