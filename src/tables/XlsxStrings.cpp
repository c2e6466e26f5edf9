#include "tables/XlsxStrings.h"

#include "platform/Encoding.h"
#include "tables/TableError.h"
#include "tables/ZipReader.h"

#include <algorithm>

namespace tables {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype BlockSize = qsizetype{1} << 20;
/// Characters and texts: 8 a cell in a sheet of 1,000,000 rows and 16 columns of texts of which each is
/// another.
constexpr qsizetype MostCharacters = qsizetype{1} << 27;
constexpr std::size_t MostTexts = std::size_t{1} << 24;
constexpr qsizetype LongestText = qsizetype{1} << 20;
constexpr std::size_t PulseEvery = 4096;
/// _xHHHH_
constexpr qsizetype EscapeLength = 7;

/// The character that an escape at `at` stands for; -1 when there is none.
int EscapedAt(QStringView text, qsizetype at)
{
    const QStringView escape = text.sliced(at).first(std::min(EscapeLength, text.size() - at));
    if (escape.size() < EscapeLength || !escape.startsWith(u"_x") || escape.back() != u'_') return -1;
    bool isNumber = false;
    const QStringView digits = escape.sliced(2, 4);
    const int code = digits.toInt(&isNumber, 16);
    return isNumber && !digits.contains(u'+') && !digits.contains(u'-') && !digits.contains(u' ') ? code : -1;
}

bool NeedsEscape(QChar character)
{
    const char16_t unit = character.unicode();
    return (unit < 0x20 && unit != u'\t' && unit != u'\n') || unit == 0xFFFE || unit == 0xFFFF;
}

} // namespace

CString WithoutEscapes(CString text)
{
    for (qsizetype at = text.indexOf(u"_x"_s); at >= 0; at = text.indexOf(u"_x"_s, at + 1)) {
        const int code = EscapedAt(text, at);
        if (code >= 0) text.replace(at, EscapeLength, QChar(static_cast<char16_t>(code)));
    }
    return text;
}

CString WithEscapes(CString text)
{
    for (qsizetype at = text.size() - 1; at >= 0; --at) {
        const bool looksEscaped = text.at(at) == u'_' && EscapedAt(text, at) >= 0;
        if (!looksEscaped && !NeedsEscape(text.at(at))) continue;
        const CString code = CString::number(text.at(at).unicode(), 16).toUpper().rightJustified(4, u'0');
        text.replace(at, 1, u"_x"_s + code + u'_');
    }
    return text;
}

void XlsxStrings::Read(ZipReader& zip, const CString& part, const std::function<void()>& pulse)
{
    m_path = zip.Path();
    m_pulse = pulse;
    XmlStream(zip, part.toUtf8().constData(), *this).Run();
}

void XlsxStrings::Start(std::string_view name, const XmlAttributes& /*attributes*/)
{
    if (name == "si") m_current.resize(0);
    if (name == "rPh") ++m_reading;
    m_isInText = name == "t" && m_reading == 0;
}

void XlsxStrings::End(std::string_view name)
{
    m_isInText = false;
    if (name == "rPh") --m_reading;
    if (name == "si") Keep(WithoutEscapes(platform::FromUtf8(m_current)));
}

void XlsxStrings::Text(std::string_view text)
{
    if (!m_isInText) return;
    m_current.append(text.data(), static_cast<qsizetype>(text.size()));
    if (m_current.size() > LongestText * 3) throw TableError(m_path, u"单元格的文字过长"_s);
}

void XlsxStrings::Keep(const CString& text)
{
    m_size += text.size();
    if (m_size > MostCharacters || m_texts.size() == MostTexts)
        throw TableError(m_path, u"工作簿的文字太多，请改用 CSV 文件"_s);
    if (m_pulse && m_texts.size() % PulseEvery == 0) m_pulse();
    if (m_blocks.isEmpty() || m_blocks.last().capacity() - m_blocks.last().size() < text.size()) {
        m_blocks.append(CString());
        m_blocks.last().reserve(std::max(BlockSize, text.size()));
    }
    CString& block = m_blocks.last();
    const qsizetype begin = block.size();
    block += text;
    m_texts.push_back(QStringView(block).sliced(begin));
}

} // namespace tables
