#include "tables/NumberText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>
#include <string_view>

namespace tables {

namespace {

bool IsDigit(char character)
{
    return character >= '0' && character <= '9';
}

/// A plain number taken apart, without zeros that say nothing.
struct Plain
{
    bool isNegative = false;
    std::string_view whole;
    std::string_view fraction;

    /// Nothing when `text` has an exponent or is no number.
    static std::optional<Plain> Of(std::string_view text);
    /// Whether it has more digits than a binary number keeps.
    bool IsLong() const { return whole.size() + fraction.size() > std::size_t{ExactDigits}; }
    std::string Text() const;
};

std::size_t DigitsIn(std::string_view text)
{
    std::size_t count = 0;
    while (count < text.size() && IsDigit(text[count]))
        ++count;
    return count;
}

std::optional<Plain> Plain::Of(std::string_view text)
{
    Plain plain;
    if (text.starts_with('-') || text.starts_with('+')) {
        plain.isNegative = text.front() == '-';
        text.remove_prefix(1);
    }
    plain.whole = text.substr(0, DigitsIn(text));
    text.remove_prefix(plain.whole.size());
    if (text.starts_with('.')) {
        plain.fraction = text.substr(1, DigitsIn(text.substr(1)));
        text.remove_prefix(1 + plain.fraction.size());
    }
    if (!text.empty() || (plain.whole.empty() && plain.fraction.empty())) return std::nullopt;
    plain.whole.remove_prefix(std::min(plain.whole.find_first_not_of('0'), plain.whole.size()));
    const std::size_t last = plain.fraction.find_last_not_of('0');
    plain.fraction = plain.fraction.substr(0, last == std::string_view::npos ? 0 : last + 1);
    return plain;
}

std::string Plain::Text() const
{
    std::string text;
    if (isNegative && !(whole.empty() && fraction.empty())) text += '-';
    whole.empty() ? text += '0' : text += whole;
    if (!fraction.empty()) text.append(1, '.').append(fraction);
    return text;
}

std::optional<std::string> OfBinary(std::string_view text)
{
    if (text.starts_with('+')) text.remove_prefix(1);
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value))
        return std::nullopt;
    if (value == 0) return "0";
    char buffer[400];
    const auto written = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed);
    if (written.ec != std::errc()) return std::nullopt;
    return std::string(buffer, written.ptr);
}

std::string_view Trimmed(QByteArrayView bytes)
{
    const QByteArrayView trimmed = bytes.trimmed();
    return {trimmed.data(), static_cast<std::size_t>(trimmed.size())};
}

} // namespace

std::optional<CString> NumberText(QByteArrayView stored)
{
    const std::string_view text = Trimmed(stored);
    if (const std::optional<Plain> plain = Plain::Of(text)) {
        if (plain->fraction.empty() || !plain->IsLong()) return CString::fromStdString(plain->Text());
    }
    if (const std::optional<std::string> number = OfBinary(text)) return CString::fromStdString(*number);
    return std::nullopt;
}

bool IsShortestNumber(QByteArrayView text)
{
    const std::string_view number(text.data(), static_cast<std::size_t>(text.size()));
    const std::optional<Plain> plain = Plain::Of(number);
    if (!plain || number.front() == '+') return false;
    // What is left of the text without zeros that say nothing must be all of it.
    const bool isZero = plain->whole.empty() && plain->fraction.empty();
    const std::size_t length = (plain->isNegative && !isZero ? 1 : 0) +
                               std::max<std::size_t>(plain->whole.size(), 1) +
                               (plain->fraction.empty() ? 0 : plain->fraction.size() + 1);
    return number.size() == length;
}

bool IsShortestNumber(QStringView text)
{
    constexpr qsizetype Longest = 400;
    if (text.isEmpty() || text.size() > Longest) return false;
    char latin[Longest];
    for (qsizetype at = 0; at < text.size(); ++at) {
        const char16_t unit = text[at].unicode();
        if (unit > u'9') return false;
        latin[at] = static_cast<char>(unit);
    }
    return IsShortestNumber(QByteArrayView(latin, text.size()));
}

int SignificantDigits(QStringView number)
{
    CString digits;
    for (const QChar character : number) {
        if (character.isDigit() && !(digits.isEmpty() && character == u'0')) digits += character;
    }
    while (digits.endsWith(u'0'))
        digits.chop(1);
    return static_cast<int>(digits.size());
}

} // namespace tables
