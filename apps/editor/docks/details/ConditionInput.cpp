#include "editor/docks/details/ConditionInput.h"

#include "rules/match/CellText.h"
#include "rules/sheet/ConditionCell.h"

#include <algorithm>
#include <compare>
#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

constexpr int NoForm = -1;
constexpr int AboveForm = 2;

/// The distance of the full-width forms from the ASCII characters that they stand for.
constexpr char16_t FullWidthOffset = 0xFEE0;

int FindForm(const CString& equal, const CString& lower, const CString& upper)
{
    const auto& forms = ConditionForms();
    const auto found = std::find_if(forms.begin(), forms.end(), [&](const ConditionForm& form) {
        return form.equal == equal && form.lower == lower && form.upper == upper;
    });
    return found == forms.end() ? NoForm : static_cast<int>(found - forms.begin());
}

const ConditionForm& FormOf(const ConditionInput& input)
{
    return ConditionForms().at(static_cast<std::size_t>(input.form));
}

CString FaultOfBound(const CString& bound, const rules::NumberReader& numbers)
{
    if (bound.isEmpty()) return u"没有数值"_s;
    return numbers.Read(bound) ? CString() : u"“%1”不是数"_s.arg(bound);
}

CString FaultOfBounds(const ConditionInput& input, const rules::NumberReader& numbers)
{
    const ConditionForm& form = FormOf(input);
    CString fault = FaultOfBound(input.first, numbers);
    if (!fault.isEmpty() || !form.HasTwoBounds()) return fault;
    fault = FaultOfBound(input.second, numbers);
    if (!fault.isEmpty()) return u"上限："_s + fault;
    const auto order = *numbers.Read(input.first) <=> *numbers.Read(input.second);
    const bool holdsBoth = form.lower == u"≥" && form.upper == u"≤";
    return std::is_lt(order) || (std::is_eq(order) && holdsBoth) ? CString() : u"上限没有比下限大"_s;
}

} // namespace

const std::array<ConditionForm, FormCount>& ConditionForms()
{
    static const std::array<ConditionForm, FormCount> Forms{{
        {u"＝"_s, u"等于"_s, u"＝"_s, {}, {}},
        {u"≠"_s, u"不等于"_s, u"≠"_s, {}, {}},
        {u"＞"_s, u"大于"_s, {}, u"＞"_s, {}},
        {u"≥"_s, u"大于或等于"_s, {}, u"≥"_s, {}},
        {u"＜"_s, u"小于"_s, {}, {}, u"＜"_s},
        {u"≤"_s, u"小于或等于"_s, {}, {}, u"≤"_s},
        {u"＜..≤"_s, u"大于下限，不大于上限"_s, {}, u"＞"_s, u"≤"_s},
        {u"≤..＜"_s, u"不小于下限，小于上限"_s, {}, u"≥"_s, u"＜"_s},
        {u"＜..＜"_s, u"大于下限，小于上限"_s, {}, u"＞"_s, u"＜"_s},
        {u"≤..≤"_s, u"不小于下限，不大于上限"_s, {}, u"≥"_s, u"≤"_s},
    }};
    return Forms;
}

ConditionInput InputOf(const rules::Condition& condition)
{
    ConditionInput input;
    input.attribute = condition.attribute;
    if (condition.isValueForm) {
        input.form = FindForm(condition.equalOperator, {}, {});
        input.first = condition.value;
        return input;
    }
    const bool hasLower = !condition.lowerBound.isEmpty();
    const bool hasUpper = !condition.upperBound.isEmpty();
    // A file may hold an operator for a bound that is not there.
    input.form = FindForm({}, hasLower ? condition.lowerOperator : CString(),
                          hasUpper ? condition.upperOperator : CString());
    input.first = hasLower ? condition.lowerBound : condition.upperBound;
    input.second = hasLower ? condition.upperBound : CString();
    return input;
}

const rules::AttributeFacts* FindFacts(const rules::CategoryFacts& attributes, const CString& name)
{
    const auto found = std::find_if(attributes.begin(), attributes.end(),
                                    [&](const auto& facts) { return facts.name == name; });
    return found == attributes.end() ? nullptr : &*found;
}

CString FaultOf(const ConditionInput& input, const rules::CategoryFacts& attributes)
{
    if (input.attribute.isEmpty()) return u"没有选属性"_s;
    const rules::AttributeFacts* const facts = FindFacts(attributes, input.attribute);
    if (facts == nullptr && !attributes.empty()) return u"小类没有属性“%1”"_s.arg(input.attribute);
    if (input.form == NoForm) return u"没有选运算符"_s;
    if (FormOf(input).IsValue()) return input.first.isEmpty() ? u"没有值"_s : CString();
    if (facts != nullptr && !facts->allowsRange) return u"“%1”只能用 ＝ 或 ≠"_s.arg(input.attribute);
    return FaultOfBounds(input, rules::NumberReader(facts == nullptr ? CStringArray() : facts->valueList));
}

rules::Condition ConditionFrom(const ConditionInput& input)
{
    const ConditionForm& form = FormOf(input);
    rules::Condition condition;
    condition.attribute = input.attribute;
    condition.isValueForm = form.IsValue();
    condition.equalOperator = form.equal;
    condition.lowerOperator = form.lower;
    condition.upperOperator = form.upper;
    if (form.IsValue())
        condition.value = input.first;
    else if (form.lower.isEmpty())
        condition.upperBound = input.first;
    else
        condition.lowerBound = input.first;
    if (form.HasTwoBounds()) condition.upperBound = input.second;
    return condition;
}

ConditionInput WithAttribute(ConditionInput input, const CString& name,
                             const rules::CategoryFacts& attributes)
{
    input.attribute = name.trimmed();
    const rules::AttributeFacts* const facts = FindFacts(attributes, input.attribute);
    if (facts == nullptr) return input;
    const bool isValue = input.form != NoForm && FormOf(input).IsValue();
    if (!facts->allowsRange && !isValue) input = {input.attribute, 0, {}, {}};
    if (isValue && !facts->valueList.isEmpty() && !facts->valueList.contains(input.first))
        input.first.clear();
    return input;
}

ConditionInput WithForm(ConditionInput input, int form)
{
    const bool hadTwo = input.form != NoForm && FormOf(input).HasTwoBounds();
    const bool hadUpper = input.form != NoForm && !hadTwo && !FormOf(input).upper.isEmpty();
    input.form = form;
    if (form == NoForm) return input;
    const bool hasTwo = FormOf(input).HasTwoBounds();
    if (hasTwo && hadUpper) input.second = std::exchange(input.first, CString());
    if (!hasTwo && hadTwo) {
        const bool keepsUpper = FormOf(input).lower.isEmpty() && !FormOf(input).IsValue();
        if (keepsUpper) input.first = input.second;
        input.second.clear();
    }
    return input;
}

ConditionInput WithText(ConditionInput input, const CString& typed, const rules::CategoryFacts& attributes)
{
    const CString text = Folded(typed);
    const rules::AttributeFacts* const facts = FindFacts(attributes, input.attribute);
    const auto written = rules::ConditionOf(input.attribute, text);
    const bool isListed = facts != nullptr && facts->valueList.contains(text);
    if (isListed || (written && written->isValueForm && written->value == text)) {
        input.first = text;
        return input;
    }
    if (!written) return {input.attribute, AboveForm, text, {}}; // a range that is none
    input = InputOf(*written);
    input.first = Folded(input.first);
    input.second = Folded(input.second);
    return input;
}

CString Folded(const CString& typed)
{
    const CString text = typed.trimmed();
    CString folded = text;
    for (QChar& c : folded)
        if (c >= u'！' && c <= u'～') c = QChar(static_cast<char16_t>(c.unicode() - FullWidthOffset));
    return rules::PlainNumber(folded) ? folded : text;
}

} // namespace editor
