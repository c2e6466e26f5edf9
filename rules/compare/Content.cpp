#include "rules/compare/Content.h"

#include <QtCore/QHashFunctions>

#include <algorithm>

namespace rules {

namespace {

template <typename Part>
bool HaveSameContent(const std::vector<Part>& a, const std::vector<Part>& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const Part& one, const Part& other) { return HasSameContent(one, other); });
}

} // namespace

bool HasSameContent(const Condition& a, const Condition& b)
{
    return a.isValueForm == b.isValueForm && a.attribute == b.attribute && a.value == b.value &&
           a.lowerBound == b.lowerBound && a.upperBound == b.upperBound &&
           a.equalOperator == b.equalOperator && a.lowerOperator == b.lowerOperator &&
           a.upperOperator == b.upperOperator;
}

bool HasSameContent(const QuotaItem& a, const QuotaItem& b)
{
    return a.record == b.record;
}

bool HasSameContent(const BillItem& a, const BillItem& b)
{
    return a.record == b.record && HaveSameContent(a.quotas, b.quotas);
}

bool HasSameContent(const Rule& a, const Rule& b)
{
    return a.isDefault == b.isDefault && HaveSameContent(a.conditions, b.conditions) &&
           HaveSameContent(a.bills, b.bills) && HaveSameContent(a.quotas, b.quotas);
}

CString ConditionsKey(const Rule& rule)
{
    if (rule.isDefault) return rule.Text();
    CStringArray texts;
    for (const Condition& condition : rule.conditions)
        texts.append(condition.Text());
    std::sort(texts.begin(), texts.end());
    return texts.join(u';') + u';';
}

std::size_t ContentHash(const Rule& rule)
{
    std::size_t hash = qHashMulti(0, rule.isDefault, rule.bills.size(), rule.quotas.size());
    for (const Condition& condition : rule.conditions)
        hash = qHashMulti(hash, condition.attribute, condition.value, condition.lowerBound,
                          condition.upperBound);
    for (const BillItem& item : rule.bills)
        hash = qHashMulti(hash, item.record.strQdId, item.record.strName, item.quotas.size());
    for (const QuotaItem& item : rule.quotas)
        hash = qHashMulti(hash, item.record.strDeId, item.record.strName);
    return hash;
}

Rule BareDefault()
{
    Rule rule;
    rule.id = 1;
    rule.isDefault = true;
    return rule;
}

bool IsBareDefault(const Rule& rule)
{
    return rule.isDefault && rule.conditions.empty() && rule.bills.empty() && rule.quotas.empty();
}

bool HoldsBareDefaultAlone(const SmallCategory& category)
{
    return category.rules.size() == 1 && IsBareDefault(category.rules.front());
}

std::size_t CountOf(const SmallCategory& category)
{
    return HoldsBareDefaultAlone(category) ? 0 : category.rules.size();
}

std::size_t CountOf(const Specialty& specialty)
{
    std::size_t count = 0;
    for (const BigCategory& big : specialty.bigCategories)
        for (const SmallCategoryPtr& small : big.smallCategories)
            count += CountOf(*small);
    return count;
}

} // namespace rules
