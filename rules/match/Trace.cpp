#include "rules/match/Trace.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace rules {

namespace {

Reason Compare(const CString& value, const CString& cell)
{
    if (WithoutBlanks(value) == WithoutBlanks(cell)) return Reason::Same;
    const auto number = PlainNumber(value);
    if (number && number == PlainNumber(cell)) return Reason::SameNumber;
    return Normalised(value) == Normalised(cell) ? Reason::SameNormalised : Reason::Different;
}

Verdict JudgeRange(const Condition& condition, const NumberReader& numbers, const CString& cell)
{
    const auto number = numbers.Read(cell);
    if (!number) return {false, Reason::NotANumber};
    if (!condition.lowerBound.isEmpty()) {
        const Decimal bound = *numbers.Read(condition.lowerBound);
        const bool holds = *number > bound || (*number == bound && condition.lowerOperator == u"≥"_s);
        if (!holds) return {false, Reason::OutsideLower};
    }
    if (!condition.upperBound.isEmpty()) {
        const Decimal bound = *numbers.Read(condition.upperBound);
        const bool holds = *number < bound || (*number == bound && condition.upperOperator == u"≤"_s);
        if (!holds) return {false, Reason::OutsideUpper};
    }
    return {true, Reason::WithinBounds};
}

std::optional<Reason> ReasonOf(Defect defect)
{
    switch (defect) {
    case Defect::NoAttribute:
        return Reason::NoAttribute;
    case Defect::UnknownOperator:
        return Reason::UnknownOperator;
    case Defect::BoundNotANumber:
        return Reason::BoundNotANumber;
    case Defect::None:
        break;
    }
    return std::nullopt;
}

CString Words(const Verdict& verdict, const Cell& cell)
{
    const CString value = cell ? WithoutBlanks(*cell).toString() : CString();
    switch (verdict.reason) {
    case Reason::Same:
    case Reason::Different:
    case Reason::WithinBounds:
    case Reason::OutsideLower:
    case Reason::OutsideUpper:
        return u"构件的值是“%1”"_s.arg(value);
    case Reason::SameNumber:
        return u"构件的值是“%1”，按数值相等"_s.arg(value);
    case Reason::SameNormalised:
        return u"构件的值是“%1”，统一全角半角等写法后相等"_s.arg(value);
    case Reason::NotANumber:
        return u"构件的值“%1”不是数字"_s.arg(value);
    case Reason::NoAttribute:
        return u"条件没有写属性名称"_s;
    case Reason::UnknownOperator:
        return u"条件的运算符不能识别"_s;
    case Reason::BoundNotANumber:
        return u"条件的范围值不是数字"_s;
    case Reason::AttributeMissing:
        return u"构件没有这个属性"_s;
    case Reason::CellEmpty:
        return u"构件的值是空的"_s;
    }
    return {};
}

/// Goes through the conditions of one rule.
class Teller
{
public:
    Teller(const CategoryMatcher& matcher, std::span<const Cell> cells) : m_cells(cells)
    {
        for (std::size_t i = 0; i < matcher.Attributes().size(); ++i)
            m_attributes.emplace(Normalised(matcher.Attributes()[i].name),
                                 Place{i, &matcher.Attributes()[i].numbers});
    }

    RuleTrace Tell(const Rule& rule, RuleIndex index) const
    {
        RuleTrace trace;
        trace.rule = index;
        for (const Condition& condition : rule.conditions) {
            const auto place = m_attributes.find(Normalised(condition.attribute));
            const bool named = place != m_attributes.end();
            const Cell cell = named ? m_cells[place->second.index] : Cell();
            const Verdict verdict = Judge(condition, named ? *place->second.numbers : m_plain, cell);
            if (verdict.holds)
                ++trace.holding;
            else if (trace.failed < 0)
                trace.failed = static_cast<int>(trace.verdicts.size());
            trace.verdicts.push_back(verdict);
            trace.cells.push_back(cell);
        }
        return trace;
    }

private:
    struct Place
    {
        std::size_t index;
        const NumberReader* numbers;
    };

    std::span<const Cell> m_cells;
    std::map<CString, Place> m_attributes;
    NumberReader m_plain{{}};
};

} // namespace

Verdict Judge(const Condition& condition, const NumberReader& numbers, const Cell& cell)
{
    if (const auto reason = ReasonOf(DefectOf(condition, numbers))) return {false, *reason};
    if (!cell) return {false, Reason::AttributeMissing};
    if (WithoutBlanks(*cell).isEmpty()) return {false, Reason::CellEmpty};
    if (!condition.isValueForm) return JudgeRange(condition, numbers, *cell);
    const Reason reason = Compare(condition.value, *cell);
    return {(reason != Reason::Different) == (condition.equalOperator == u"＝"_s), reason};
}

CString Describe(const Condition& condition, const Verdict& verdict, const Cell& cell)
{
    return condition.Text() + u'：' + Words(verdict, cell);
}

Trace Explain(const CategoryMatcher& matcher, std::span<const Cell> cells)
{
    const std::vector<Rule>& rules = matcher.Category().rules;
    const Teller teller(matcher, cells);
    Trace trace;
    for (std::size_t i = 0; i < rules.size(); ++i) {
        if (rules[i].isDefault) continue;
        RuleTrace told = teller.Tell(rules[i], static_cast<RuleIndex>(i));
        if (told.failed < 0) {
            trace.applies = told.rule;
            trace.applied = std::move(told);
            return trace;
        }
        trace.before.push_back(std::move(told));
    }
    const auto byDefault =
        std::find_if(rules.begin(), rules.end(), [](const Rule& rule) { return rule.isDefault; });
    if (byDefault != rules.end()) trace.applies = static_cast<RuleIndex>(byDefault - rules.begin());
    return trace;
}

RuleTrace ExplainRule(const CategoryMatcher& matcher, std::span<const Cell> cells, RuleIndex rule)
{
    return Teller(matcher, cells).Tell(matcher.Category().rules[static_cast<std::size_t>(rule)], rule);
}

} // namespace rules
