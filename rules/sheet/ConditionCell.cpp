#include "rules/sheet/ConditionCell.h"

#include <array>

using namespace Qt::StringLiterals;

namespace rules {

namespace {

const CString Dots = u".."_s;

struct Spelling
{
    QStringView written;
    QStringView sign;
};

// The longer ones first.
constexpr std::array<Spelling, 11> Spellings{{{u"<>", u"≠"},
                                              {u"!=", u"≠"},
                                              {u"<=", u"≤"},
                                              {u">=", u"≥"},
                                              {u"=", u"＝"},
                                              {u"<", u"＜"},
                                              {u">", u"＞"},
                                              {u"＝", u"＝"},
                                              {u"≠", u"≠"},
                                              {u"≤", u"≤"},
                                              {u"≥", u"≥"}}};

/// Takes the sign off the front of a text; empty when there is none.
CString TakeSign(QStringView& text)
{
    for (const QStringView plain : {QStringView(u"＜"), QStringView(u"＞")})
        if (text.startsWith(plain)) {
            text = text.sliced(plain.size());
            return plain.toString();
        }
    for (const Spelling& spelling : Spellings)
        if (text.startsWith(spelling.written)) {
            text = text.sliced(spelling.written.size());
            return spelling.sign.toString();
        }
    return {};
}

bool IsLower(const CString& sign)
{
    return sign == u"＞" || sign == u"≥";
}

bool IsUpper(const CString& sign)
{
    return sign == u"＜" || sign == u"≤";
}

/// The same relation seen from the other side.
CString Turned(const CString& sign)
{
    if (sign == u"＜") return u"＞"_s;
    if (sign == u"≤") return u"≥"_s;
    if (sign == u"＞") return u"＜"_s;
    return u"≤"_s;
}

std::optional<Condition> RangeOf(const CString& attribute, const CString& lowerSign, const CString& lower,
                                 const CString& upperSign, const CString& upper)
{
    Condition condition;
    condition.attribute = attribute;
    condition.isValueForm = false;
    condition.lowerOperator = lowerSign;
    condition.lowerBound = lower.trimmed();
    condition.upperOperator = upperSign;
    condition.upperBound = upper.trimmed();
    const bool hasLower = !lowerSign.isEmpty();
    const bool hasUpper = !upperSign.isEmpty();
    if (hasLower == condition.lowerBound.isEmpty() || hasUpper == condition.upperBound.isEmpty())
        return std::nullopt;
    return condition;
}

/// 50＜..≤65: the first sign stands behind its bound.
std::optional<Condition> RangeBetween(const CString& attribute, const CString& first, const CString& second)
{
    for (const qsizetype length : {qsizetype{2}, qsizetype{1}}) {
        if (first.size() <= length) continue;
        const CString tail = first.last(length);
        QStringView text = tail;
        const CString sign = TakeSign(text);
        if (!IsUpper(sign) || !text.isEmpty()) continue;
        QStringView rest = second;
        const CString upperSign = TakeSign(rest);
        if (!IsUpper(upperSign)) return std::nullopt;
        return RangeOf(attribute, Turned(sign), first.chopped(length), upperSign, rest.toString());
    }
    return std::nullopt;
}

/// Whether a sign stands on one side of the dots; otherwise they belong to a value.
bool LooksLikeRange(const CString& first, const CString& second)
{
    const CString end = first.trimmed().right(1);
    const CString begin = second.trimmed().left(1);
    const QStringView signs = u"＜≤＞≥<>=";
    return (!end.isEmpty() && signs.contains(end)) || (!begin.isEmpty() && signs.contains(begin));
}

/// Whether two conditions say the same in the fields that count for their form.
bool SayTheSame(const Condition& a, const Condition& b)
{
    if (a.isValueForm != b.isValueForm) return false;
    if (a.isValueForm) return a.equalOperator == b.equalOperator && a.value == b.value;
    return a.lowerBound == b.lowerBound && a.upperBound == b.upperBound &&
           (a.lowerBound.isEmpty() || a.lowerOperator == b.lowerOperator) &&
           (a.upperBound.isEmpty() || a.upperOperator == b.upperOperator);
}

} // namespace

std::optional<Condition> ConditionOf(const CString& attribute, const CString& cell)
{
    QStringView rest = cell;
    const CString sign = TakeSign(rest);
    if (IsLower(sign)) return RangeOf(attribute, sign, rest.toString(), {}, {});
    if (IsUpper(sign)) return RangeOf(attribute, {}, {}, sign, rest.toString());
    const qsizetype dots = cell.indexOf(Dots);
    if (sign.isEmpty() && dots >= 0 && LooksLikeRange(cell.left(dots), cell.mid(dots + Dots.size())))
        return RangeBetween(attribute, cell.left(dots).trimmed(), cell.mid(dots + Dots.size()).trimmed());
    Condition condition;
    condition.attribute = attribute;
    condition.equalOperator = sign.isEmpty() ? u"＝"_s : sign;
    condition.value = rest.toString();
    return condition;
}

std::optional<CString> CellOf(const Condition& condition)
{
    CString cell;
    if (condition.isValueForm) {
        cell = condition.equalOperator + condition.value;
    } else {
        const bool hasLower = !condition.lowerBound.isEmpty();
        const bool hasUpper = !condition.upperBound.isEmpty();
        if (hasLower && hasUpper)
            cell = condition.lowerBound + Turned(condition.lowerOperator) + Dots + condition.upperOperator +
                   condition.upperBound;
        else if (hasLower)
            cell = condition.lowerOperator + condition.lowerBound;
        else
            cell = condition.upperOperator + condition.upperBound;
    }
    // Only what is read back as what it is may be written.
    const auto back = ConditionOf(condition.attribute, cell);
    const bool isSame =
        back && SayTheSame(*back, condition) && !cell.contains(u'\n') && cell == cell.trimmed();
    return isSame ? std::optional(cell) : std::nullopt;
}

} // namespace rules
