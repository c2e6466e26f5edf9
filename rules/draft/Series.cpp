#include "rules/draft/Series.h"

#include "rules/draft/EditTools.h"
#include "rules/draft/PartNumbers.h"
#include "rules/match/CellText.h"

#include <algorithm>
#include <optional>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace rules {

namespace {

[[noreturn]] void Refuse(const CString& reason)
{
    throw std::invalid_argument(reason.toStdString());
}

void CheckValues(const SeriesPlan& plan)
{
    if (WithoutBlanks(plan.attribute).isEmpty()) Refuse(u"系列没有写属性"_s);
    if (plan.values.isEmpty()) Refuse(u"系列没有值"_s);
    for (qsizetype i = 0; i < plan.values.size(); ++i) {
        const CString& value = plan.values[i];
        if (WithoutBlanks(value).isEmpty()) Refuse(u"系列的第 %1 个值是空的"_s.arg(i + 1));
        const auto isSame = [&](const CString& other) { return IsSameValue(other, value); };
        if (std::any_of(plan.values.begin(), plan.values.begin() + i, isSame))
            Refuse(u"系列里有两个“%1”"_s.arg(value));
    }
}

void CheckRising(const SeriesPlan& plan)
{
    const NumberReader numbers(plan.valueList);
    std::optional<Decimal> last;
    for (const CString& value : plan.values) {
        auto number = numbers.Read(value);
        if (!number) Refuse(u"“%1”不是数字，不能作范围的界限"_s.arg(value));
        if (last && *number <= *last) Refuse(u"“%1”不比前一个值大，范围的界限要从小到大"_s.arg(value));
        last = std::move(number);
    }
}

std::vector<Condition> ValueConditions(const SeriesPlan& plan)
{
    std::vector<Condition> conditions;
    for (const CString& value : plan.values) {
        Condition& condition = conditions.emplace_back();
        condition.attribute = plan.attribute;
        condition.equalOperator = u"＝"_s;
        condition.value = value;
    }
    return conditions;
}

std::vector<Condition> RangeConditions(const SeriesPlan& plan)
{
    CheckRising(plan);
    const bool isUpperClosed = plan.form == SeriesForm::UpperClosed;
    CStringArray bounds = plan.values;
    // An open end is an empty bound.
    if (isUpperClosed ? plan.withOpenEnds : plan.withRest) bounds.prepend(CString());
    if (isUpperClosed ? plan.withRest : plan.withOpenEnds) bounds.append(CString());
    if (bounds.size() < 2) Refuse(u"范围至少要两个值"_s);
    std::vector<Condition> conditions;
    for (qsizetype i = 0; i + 1 < bounds.size(); ++i) {
        Condition& condition = conditions.emplace_back();
        condition.attribute = plan.attribute;
        condition.isValueForm = false;
        condition.lowerOperator = isUpperClosed ? u"＞"_s : u"≥"_s;
        condition.lowerBound = bounds[i];
        condition.upperOperator = isUpperClosed ? u"≤"_s : u"＜"_s;
        condition.upperBound = bounds[i + 1];
    }
    return conditions;
}

Rule PatternOf(Rule rule)
{
    if (rule.isDefault) rule.conditions.clear();
    rule.isDefault = false;
    rule.id = 0;
    rule.counters = {};
    for (Condition& condition : rule.conditions)
        condition.id = 0;
    for (BillItem& bill : rule.bills) {
        bill.id = 0;
        for (QuotaItem& quota : bill.quotas)
            quota.id = 0;
    }
    for (QuotaItem& quota : rule.quotas)
        quota.id = 0;
    return rule;
}

/// The rule with that condition alone on its attribute.
Rule WithCondition(Rule rule, const Condition& condition)
{
    const auto concerns = [name = Normalised(condition.attribute)](const Condition& known) {
        return Normalised(known.attribute) == name;
    };
    std::vector<Condition>& conditions = rule.conditions;
    const auto first = std::find_if(conditions.begin(), conditions.end(), concerns);
    if (first == conditions.end()) {
        conditions.push_back(condition);
    } else {
        *first = condition;
        conditions.erase(std::remove_if(std::next(first), conditions.end(), concerns), conditions.end());
    }
    return rule;
}

} // namespace

std::vector<Rule> MakeSeries(const Rule& pattern, const SeriesPlan& plan)
{
    CheckValues(plan);
    const Rule bare = PatternOf(pattern);
    std::vector<Rule> rules;
    for (const Condition& condition :
         plan.form == SeriesForm::Values ? ValueConditions(plan) : RangeConditions(plan))
        rules.push_back(WithCondition(bare, condition));
    return rules;
}

Edit InsertSeries(const Draft& draft, const CString& category, std::size_t position, const SeriesPlan& plan,
                  bool replacesPattern)
{
    const SmallCategoryPtr present = CategoryOf(draft, category);
    const std::size_t place = PlacesIn(*present, {position}).front();
    const Rule& pattern = present->rules[place];
    std::vector<Rule> rules = MakeSeries(pattern, plan);
    const std::vector<int> ids = draft.FreshIds(category, rules.size());
    ListChange change(*present);
    change.KeepRange(0, place);
    if (!pattern.isDefault && !replacesPattern) change.Keep(place);
    for (std::size_t i = 0; i < rules.size(); ++i) {
        NumberAnew(rules[i]);
        rules[i].id = ids[i];
        change.Put(std::move(rules[i]));
    }
    if (pattern.isDefault) change.Keep(place);
    change.KeepRange(place + 1, present->rules.size());
    Edit edit{u"系列：%1，%2 条规则"_s.arg(plan.attribute, CString::number(rules.size())), {}};
    change.AppendTo(edit);
    return edit;
}

} // namespace rules
