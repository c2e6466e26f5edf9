#include "tests/rules/reference/ReferenceMatcher.h"

#include <QtCore/QRegularExpression>

#include <optional>

using namespace Qt::StringLiterals;

namespace test {

namespace {

CString Normal(const CString& text)
{
    return text.trimmed().normalized(CString::NormalizationForm_KC);
}

/// Full-width forms as plain ones, without blanks around.
CString Narrow(const CString& text)
{
    CString narrow;
    for (const QChar c : text.trimmed())
        narrow += c >= QChar(0xFF01) && c <= QChar(0xFF5E) ? QChar(c.unicode() - 0xFEE0) : c;
    return narrow;
}

/// A number as its sign and its digits without idle zeros before and behind.
struct Number
{
    bool negative;
    CString whole;
    CString fraction;
};

std::optional<Number> Read(const CString& text)
{
    static const QRegularExpression form(u"^([+-]?)(?:([0-9]+)\\.?([0-9]*)|\\.([0-9]+))$"_s);
    const auto match = form.match(Narrow(text));
    if (!match.hasMatch()) return std::nullopt;
    Number number{match.captured(1) == u"-", match.captured(2), match.captured(3) + match.captured(4)};
    while (number.whole.startsWith(u'0'))
        number.whole.remove(0, 1);
    while (number.fraction.endsWith(u'0'))
        number.fraction.chop(1);
    if (number.whole.isEmpty() && number.fraction.isEmpty()) number.negative = false;
    return number;
}

/// Below, at or above zero, as `a` is less than, equal to or greater than `b`.
int Order(const Number& a, const Number& b)
{
    if (a.negative != b.negative) return a.negative ? -1 : 1;
    const int sign = a.negative ? -1 : 1;
    if (a.whole.size() != b.whole.size()) return a.whole.size() < b.whole.size() ? -sign : sign;
    return sign * (a.whole + u'.' + a.fraction).compare(b.whole + u'.' + b.fraction);
}

/// What stands before and behind the one number of a text, and the number; nothing when there are two or
/// none.
std::optional<std::array<CString, 3>> Parts(const CString& text)
{
    static const QRegularExpression form(u"^([^0-9]*?)([0-9]+\\.?[0-9]*|\\.[0-9]+)([^0-9]*)$"_s,
                                         QRegularExpression::DotMatchesEverythingOption);
    const auto match = form.match(Narrow(text));
    if (!match.hasMatch()) return std::nullopt;
    const CString before = match.captured(1);
    const CString behind = match.captured(3).trimmed();
    if (before == u"-" || before == u"+") return std::array{CString(), before + match.captured(2), behind};
    return std::array{before.trimmed(), match.captured(2), behind};
}

std::optional<Number> ReadForRange(const CString& text, const CStringArray& valueList)
{
    if (const auto plain = Read(text)) return plain;
    const auto parts = Parts(text);
    for (const CString& value : valueList) {
        const auto written = Parts(value);
        if (parts && written && (*parts)[0] == (*written)[0] && (*parts)[2] == (*written)[2] && !Read(value))
            return Read((*parts)[1]);
    }
    return std::nullopt;
}

bool Equal(const CString& value, const CString& cell)
{
    const auto a = Read(value);
    const auto b = Read(cell);
    return (a && b && Order(*a, *b) == 0) || Normal(value) == Normal(cell);
}

bool Holds(const rules::Condition& condition, const rules::CategoryFacts& facts, const Component& component)
{
    rules::AttributeFacts known;
    for (auto fact = facts.rbegin(); fact != facts.rend(); ++fact)
        if (Normal(fact->name) == Normal(condition.attribute)) known = *fact;
    std::optional<CString> cell;
    for (const CString& wanted : {known.code, condition.attribute})
        for (const auto& [header, text] : component.cells)
            if (!wanted.isEmpty() && Normal(header) == Normal(wanted)) cell = text;
    if (Normal(condition.attribute) == u"具体构件") cell = component.name;
    if (Normal(condition.attribute).isEmpty() || !cell || cell->trimmed().isEmpty()) return false;
    if (condition.isValueForm) {
        if (condition.equalOperator == u"＝") return Equal(condition.value, *cell);
        return condition.equalOperator == u"≠" && !Equal(condition.value, *cell);
    }
    const auto number = ReadForRange(*cell, known.valueList);
    if (!number) return false;
    if (!condition.lowerBound.isEmpty()) {
        const auto bound = ReadForRange(condition.lowerBound, known.valueList);
        const bool orEqual = condition.lowerOperator == u"≥";
        if (!bound || (!orEqual && condition.lowerOperator != u"＞")) return false;
        if (Order(*number, *bound) < (orEqual ? 0 : 1)) return false;
    }
    if (!condition.upperBound.isEmpty()) {
        const auto bound = ReadForRange(condition.upperBound, known.valueList);
        const bool orEqual = condition.upperOperator == u"≤";
        if (!bound || (!orEqual && condition.upperOperator != u"＜")) return false;
        if (Order(*number, *bound) > (orEqual ? 0 : -1)) return false;
    }
    return true;
}

} // namespace

int ReferenceMatch(const std::vector<rules::Rule>& rules, const rules::CategoryFacts& facts,
                   const Component& component)
{
    const auto indexOf = [&](auto applies) {
        for (std::size_t i = 0; i < rules.size(); ++i)
            if (applies(rules[i])) return static_cast<int>(i);
        return -1;
    };
    const int found = indexOf([&](const rules::Rule& rule) {
        bool all = !rule.isDefault;
        for (const rules::Condition& condition : rule.conditions)
            all = all && Holds(condition, facts, component);
        return all;
    });
    return found >= 0 ? found : indexOf([](const rules::Rule& rule) { return rule.isDefault; });
}

} // namespace test
