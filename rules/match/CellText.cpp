#include "rules/match/CellText.h"

#include <algorithm>

namespace rules {

namespace {

/// Full-width forms as plain ones, nothing else: of "5²" must not become 52.
CString Narrowed(QStringView text)
{
    CString result = WithoutBlanks(text).toString();
    for (QChar& c : result)
        c = QChar(Narrow(c.unicode()));
    return result;
}

bool IsDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

/// Whether there is a digit in the text, of either width.
bool HasDigit(QStringView text)
{
    return std::any_of(text.begin(), text.end(),
                       [](QChar c) { return IsDigit(c) || (c >= u'０' && c <= u'９'); });
}

/// Whether a character is the same in compatibility normalisation, beside any of its kind: ASCII and the
/// unified ideographs, of which nearly all texts of rules and tables consist.
bool IsSettled(QChar c)
{
    constexpr char16_t FirstIdeograph = 0x4E00;
    constexpr char16_t LastIdeograph = 0x9FFF;
    return c < QChar(0x80) || (c >= FirstIdeograph && c <= LastIdeograph);
}

/// Whether a character can be part of a plain number, in either width.
bool MayBeOfNumber(QChar c)
{
    return IsDigit(c) || c == u'.' || c == u'+' || c == u'-' || Narrow(c.unicode()) != c.unicode();
}

/// A text cut at its first number. The tail holds no digit, or the text has no such parts.
struct Parts
{
    QStringView before;
    QStringView number;
    QStringView behind;
};

std::optional<Parts> Cut(QStringView text)
{
    const auto startsNumber = [&](qsizetype at) {
        return IsDigit(text[at]) || (text[at] == u'.' && at + 1 < text.size() && IsDigit(text[at + 1]));
    };
    qsizetype begin = 0;
    while (begin < text.size() && !startsNumber(begin))
        ++begin;
    if (begin == text.size()) return std::nullopt;
    qsizetype end = begin;
    for (bool point = false; end < text.size(); ++end) {
        if (text[end] == u'.' && !point)
            point = true;
        else if (!IsDigit(text[end]))
            break;
    }
    const QStringView behind = text.sliced(end);
    if (std::any_of(behind.begin(), behind.end(), IsDigit)) return std::nullopt;
    const QStringView before = text.first(begin);
    // A sign belongs to the number when nothing but the sign stands before it: "-5℃", but not "SC-100".
    if (before == u"-" || before == u"+") return Parts{{}, text.first(end), behind.trimmed()};
    return Parts{before.trimmed(), text.sliced(begin, end - begin), behind.trimmed()};
}

} // namespace

QStringView WithoutBlanks(QStringView text)
{
    return text.trimmed();
}

CString Normalised(QStringView text)
{
    return Normalised(WithoutBlanks(text).toString());
}

CString Normalised(const CString& text)
{
    if (WithoutBlanks(text).size() != text.size()) return Normalised(QStringView(text));
    if (std::all_of(text.begin(), text.end(), IsSettled)) return text;
    return text.normalized(CString::NormalizationForm_KC);
}

CString WithUnit(const CString& name, const CString& unit)
{
    return name + u'(' + unit + u')';
}

std::optional<Decimal> PlainNumber(QStringView text)
{
    text = WithoutBlanks(text);
    // Nearly all numbers are plain already.
    if (std::optional<Decimal> plain = Decimal::Parse(text)) return plain;
    if (!std::all_of(text.begin(), text.end(), MayBeOfNumber)) return std::nullopt;
    return Decimal::Parse(Narrowed(text));
}

bool IsSameValue(const CString& a, const CString& b)
{
    if (a == b || Normalised(a) == Normalised(b)) return true;
    const auto number = PlainNumber(a);
    return number && number == PlainNumber(b);
}

NumberReader::NumberReader(const CStringArray& valueList)
{
    for (const CString& value : valueList) {
        if (!HasDigit(value)) continue;
        const CString text = Narrowed(value);
        const std::optional<Parts> parts = Cut(text);
        if (parts && !(parts->before.isEmpty() && parts->behind.isEmpty()))
            m_forms.emplace(parts->before.toString(), parts->behind.toString());
    }
}

std::optional<Decimal> NumberReader::Read(QStringView cell) const
{
    if (std::optional<Decimal> plain = PlainNumber(cell)) return plain;
    if (m_forms.empty() || !HasDigit(cell)) return std::nullopt;
    const CString text = Narrowed(cell);
    const std::optional<Parts> parts = Cut(text);
    if (!parts || !m_forms.contains({parts->before.toString(), parts->behind.toString()}))
        return std::nullopt;
    return Decimal::Parse(parts->number);
}

} // namespace rules
