#include "platform/Numbers.h"

#include <QtCore/QString>

#include <limits>

namespace platform {

namespace {

bool IsBlank(QChar c)
{
    return c == u' ' || (c >= u'\t' && c <= u'\r');
}
bool IsDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}
bool IsSign(QChar c)
{
    return c == u'+' || c == u'-';
}

QStringView WithoutLeadingBlanks(QStringView text)
{
    qsizetype start = 0;
    while (start < text.size() && IsBlank(text[start]))
        ++start;
    return text.sliced(start);
}

/// The position behind the digits that begin at `position`.
qsizetype BehindDigits(QStringView text, qsizetype position)
{
    while (position < text.size() && IsDigit(text[position]))
        ++position;
    return position;
}

qsizetype BehindSign(QStringView text, qsizetype position)
{
    return position < text.size() && IsSign(text[position]) ? position + 1 : position;
}

/// The position behind an exponent at `position`; `position` itself when there is no complete one.
qsizetype BehindExponent(QStringView text, qsizetype position)
{
    if (position == text.size() || (text[position] != u'e' && text[position] != u'E')) return position;
    const qsizetype digits = BehindSign(text, position + 1);
    const qsizetype end = BehindDigits(text, digits);
    return end > digits ? end : position;
}

} // namespace

int _wtoi(QStringView text) noexcept
{
    text = WithoutLeadingBlanks(text);
    const qsizetype digits = BehindSign(text, 0);
    const bool negative = digits > 0 && text[0] == u'-';
    // The negative limit is one further from zero than the positive one.
    const std::int64_t limit = std::int64_t{std::numeric_limits<std::int32_t>::max()} + (negative ? 1 : 0);

    std::int64_t magnitude = 0;
    for (qsizetype i = digits; i < text.size() && IsDigit(text[i]) && magnitude < limit; ++i)
        magnitude = qMin(limit, magnitude * 10 + (text[i].unicode() - u'0'));
    return static_cast<int>(negative ? -magnitude : magnitude);
}

std::int32_t _wtol(QStringView text) noexcept
{
    return _wtoi(text);
}

double _wtof(QStringView text) noexcept
{
    text = WithoutLeadingBlanks(text);
    const qsizetype whole = BehindSign(text, 0);
    const qsizetype point = BehindDigits(text, whole);
    qsizetype digits = point - whole;
    qsizetype end = point;
    if (point < text.size() && text[point] == u'.') {
        end = BehindDigits(text, point + 1);
        digits = end - whole - 1;
    }
    if (digits == 0) return 0;
    return text.first(BehindExponent(text, end)).toDouble();
}

} // namespace platform
