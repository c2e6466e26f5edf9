#include "shared/PricingText.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace shared {

namespace {

/// Adds why items have no quantity. One reason that several items share is told once.
void TellFaults(const std::vector<rules::ItemLine>& lines, CStringArray& told)
{
    for (const rules::ItemLine& line : lines) {
        const CString fault = FaultText(line.quantity);
        if (!fault.isEmpty() && !told.contains(u"缺工程量："_s + fault)) told.append(u"缺工程量："_s + fault);
        TellFaults(line.quotas, told);
    }
}

CString WhyOnDefault(const rules::TakeoffComponent& component, const rules::ComponentResult& result,
                     rules::BillBuilder& builder)
{
    const auto trace = builder.Explain(component);
    const auto nearest = trace && result.category ? NearestFirst(*trace, *result.category)
                                                  : std::vector<const rules::RuleTrace*>();
    if (nearest.empty()) return u"套默认规则：没有别的规则"_s;
    return u"套默认规则：最接近的第 %1 条规则不满足 "_s.arg(nearest.front()->rule + 1) +
           MissText(*nearest.front(), *result.category);
}

int Failing(const rules::RuleTrace& trace)
{
    return static_cast<int>(trace.verdicts.size()) - trace.holding;
}

} // namespace

CString RefusalText(rules::Refusal refusal)
{
    switch (refusal) {
    case rules::Refusal::None:
        return {};
    case rules::Refusal::IdTwice:
        return u"构件编号重复，只计第一个"_s;
    case rules::Refusal::UnknownCategory:
        return u"没有这个类别"_s;
    case rules::Refusal::NoRuleApplies:
        return u"没有规则适用"_s;
    case rules::Refusal::NoItems:
        return u"适用的规则没有清单或定额项"_s;
    case rules::Refusal::OtherLibraries:
        return u"适用的规则只有别的库的项"_s;
    }
    return {};
}

CString FaultText(const rules::Quantity& quantity)
{
    switch (quantity.fault) {
    case rules::QuantityFault::None:
        return {};
    case rules::QuantityFault::EmptyFormula:
        return u"没有工程量计算式"_s;
    case rules::QuantityFault::BadFormula:
        return u"工程量计算式“%1”写得不对"_s.arg(quantity.subject);
    case rules::QuantityFault::NameWithoutValue:
        return u"“%1”没有值"_s.arg(quantity.subject);
    case rules::QuantityFault::ValueNotANumber:
        return u"“%1”的值不是数字"_s.arg(quantity.subject);
    case rules::QuantityFault::DivisionByZero:
        return u"计算式“%1”除以零"_s.arg(quantity.subject);
    case rules::QuantityFault::Circular:
        return u"“%1”的计算规则循环引用自己"_s.arg(quantity.subject);
    case rules::QuantityFault::TooLong:
        return u"计算式“%1”的结果位数太多"_s.arg(quantity.subject);
    }
    return {};
}

CString QuantityIn(const rules::Quantity& quantity, const CString& unit)
{
    if (!quantity.IsKnown()) return {};
    return quantity.value.DividedBy(rules::UnitOfMeasure::Of(unit).multiple).value().ToText();
}

std::vector<const rules::RuleTrace*> NearestFirst(const rules::Trace& trace,
                                                  const rules::SmallCategory& category)
{
    std::vector<const rules::RuleTrace*> misses;
    for (const rules::RuleTrace& miss : trace.before)
        if (!category.rules[static_cast<std::size_t>(miss.rule)].isDefault) misses.push_back(&miss);
    std::stable_sort(misses.begin(), misses.end(), [](const auto* a, const auto* b) {
        return Failing(*a) != Failing(*b) ? Failing(*a) < Failing(*b) : a->holding > b->holding;
    });
    return misses;
}

CString MissText(const rules::RuleTrace& miss, const rules::SmallCategory& category)
{
    const rules::Rule& rule = category.rules[static_cast<std::size_t>(miss.rule)];
    CStringArray texts;
    for (std::size_t i = 0; i < miss.verdicts.size(); ++i)
        if (!miss.verdicts[i].holds)
            texts.append(rules::Describe(rule.conditions[i], miss.verdicts[i], miss.cells[i]));
    return texts.join(u'；');
}

CStringArray ToldOf(const rules::TakeoffRow& row, const rules::TakeoffComponent& component,
                    const rules::ComponentResult& result, rules::BillBuilder& builder)
{
    CStringArray told;
    if (result.refusal == rules::Refusal::UnknownCategory)
        told.append(RefusalText(result.refusal) + u"：“%1”"_s.arg(row.category.toString()));
    else if (result.outcome == rules::Outcome::Refused)
        told.append(RefusalText(result.refusal));
    if (result.outcome == rules::Outcome::OnDefault) told.append(WhyOnDefault(component, result, builder));
    for (const rules::CellFault& fault : row.faults)
        told.append(u"%1 的单元格%2，按空计"_s.arg(fault.column, fault.reason));
    TellFaults(result.lines, told);
    if (result.itemsOfOtherLibraries > 0)
        told.append(u"有 %1 项属于别的库，没有计价"_s.arg(result.itemsOfOtherLibraries));
    for (const rules::Remark& remark : result.remarks)
        told.append(rules::Describe(remark));
    return told;
}

} // namespace shared
