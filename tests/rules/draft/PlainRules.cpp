#include "rules/draft/PlainRules.h"

#include <algorithm>

using namespace Qt::StringLiterals;
using rules::BillItem;
using rules::Condition;
using rules::QuotaItem;
using rules::Rule;

namespace test {

namespace {

/// Ids of parts that a rule gets in the place of others.
template <typename Part>
void GiveIds(std::vector<Part>& parts, std::vector<Part> former, int& counter)
{
    int highest = counter;
    for (const Part& part : former)
        highest = std::max(highest, part.id);
    for (Part& part : parts) {
        bool isKnown = false;
        for (std::size_t i = 0; i < former.size() && !isKnown; ++i) {
            isKnown = part.id == 0 ? former[i] == part : former[i].id == part.id;
            if (isKnown) former.erase(former.begin() + static_cast<std::ptrdiff_t>(i));
        }
        if (isKnown) continue;
        part.id = ++highest;
        counter = highest;
    }
}

/// The quota items that the former rule has below the item of that id, the first one of it.
std::vector<QuotaItem> QuotasBelow(const Rule& former, int id)
{
    for (const BillItem& bill : former.bills)
        if (bill.id == id) return bill.quotas;
    return {};
}

void GiveIdsLike(Rule& rule, const Rule& former)
{
    rule.counters = former.counters;
    GiveIds(rule.conditions, former.conditions, rule.counters.condition);
    std::vector<BillItem> billsBefore = rule.bills;
    GiveIds(rule.bills, former.bills, rule.counters.bill);
    for (std::size_t i = 0; i < rule.bills.size(); ++i) {
        const bool isNew = rule.bills[i].id != billsBefore[i].id;
        int unused = 0;
        GiveIds(rule.bills[i].quotas,
                isNew ? std::vector<QuotaItem>() : QuotasBelow(former, rule.bills[i].id), unused);
    }
    GiveIds(rule.quotas, former.quotas, rule.counters.quota);
}

/// All ids from 1 on.
Rule AsNew(Rule rule, int id)
{
    int conditions = 0;
    int bills = 0;
    int quotas = 0;
    rule.id = id;
    for (Condition& condition : rule.conditions)
        condition.id = ++conditions;
    for (BillItem& bill : rule.bills) {
        bill.id = ++bills;
        int below = 0;
        for (QuotaItem& quota : bill.quotas)
            quota.id = ++below;
    }
    for (QuotaItem& quota : rule.quotas)
        quota.id = ++quotas;
    rule.counters = {conditions, bills, quotas};
    return rule;
}

std::ptrdiff_t Step(std::size_t index)
{
    return static_cast<std::ptrdiff_t>(index);
}

/// Calls `change` with each rule, and gives the ids of what is new in it.
template <typename Change>
void ChangeThose(PlainRules::List& list, const PlainRules::Positions& positions, Change change)
{
    for (const std::size_t position : positions) {
        const Rule former = list[position];
        Rule rule = former;
        change(rule);
        GiveIdsLike(rule, former);
        if (!(rule == former)) list[position] = rule;
    }
}

} // namespace

void PlainRules::Take(const Lists& lists)
{
    m_lists = lists;
    Note();
}

void PlainRules::Note()
{
    for (const auto& [category, list] : m_lists) {
        m_highest.try_emplace(category, 1);
        for (const Rule& rule : list)
            m_highest[category] = std::max(m_highest[category], rule.id);
    }
}

std::size_t PlainRules::EndOf(const List& list)
{
    return list.back().isDefault ? list.size() - 1 : list.size();
}

void PlainRules::Insert(const CString& category, std::size_t position, List rules)
{
    List& list = In(category);
    std::size_t at = std::min(position, EndOf(list));
    for (const Rule& rule : rules)
        list.insert(list.begin() + Step(at++), AsNew(rule, ++m_highest[category]));
}

void PlainRules::Change(const CString& category, std::size_t position, Rule changed)
{
    const Rule former = In(category)[position];
    changed.id = former.id;
    changed.isDefault = former.isDefault;
    GiveIdsLike(changed, former);
    In(category)[position] = changed;
}

void PlainRules::Delete(const CString& category, const Positions& positions)
{
    List rest;
    for (std::size_t i = 0; i < In(category).size(); ++i)
        if (!positions.contains(i) || In(category)[i].isDefault) rest.push_back(In(category)[i]);
    In(category) = rest;
}

void PlainRules::Move(const CString& category, const Positions& positions, std::size_t target)
{
    List& list = In(category);
    List before;
    List moved;
    List behind;
    for (std::size_t i = 0; i < list.size(); ++i) {
        const bool isMoved = positions.contains(i) && !list[i].isDefault;
        (isMoved ? moved : i < std::min(target, EndOf(list)) ? before : behind).push_back(list[i]);
    }
    list = before;
    list.insert(list.end(), moved.begin(), moved.end());
    list.insert(list.end(), behind.begin(), behind.end());
}

void PlainRules::Shift(const CString& category, const Positions& positions, bool down)
{
    List& list = In(category);
    if (down) std::reverse(list.begin(), list.end());
    std::size_t wall = down && list.front().isDefault ? 1 : 0; // none goes before it
    Positions places;
    for (const std::size_t position : positions)
        places.insert(down ? list.size() - 1 - position : position);
    for (const std::size_t place : places) {
        if (list[place].isDefault) continue;
        if (place > wall) std::swap(list[place], list[place - 1]);
        wall = std::max(wall + 1, place);
    }
    if (down) std::reverse(list.begin(), list.end());
}

void PlainRules::Copy(const CString& from, const Positions& positions, const CString& to,
                      std::size_t position)
{
    const List source = In(from);
    std::size_t at = std::min(position, EndOf(In(to)));
    for (const std::size_t place : positions) {
        if (!source[place].isDefault) {
            In(to).insert(In(to).begin() + Step(at++), AsNew(source[place], ++m_highest[to]));
            continue;
        }
        for (Rule& target : In(to)) {
            if (!target.isDefault) continue;
            const Rule former = target;
            if (target.bills.empty() && target.quotas.empty()) {
                target.bills = source[place].bills;
                target.quotas = source[place].quotas;
                GiveIdsLike(target, former);
            }
            break;
        }
    }
}

void PlainRules::SetCondition(const CString& category, const Positions& positions, const Condition& condition)
{
    ChangeThose(In(category), positions, [&](Rule& rule) {
        if (rule.isDefault) return;
        for (Condition& present : rule.conditions) {
            if (present.attribute != condition.attribute) continue;
            const int id = present.id;
            present = condition;
            present.id = id;
            return;
        }
        rule.conditions.push_back(condition);
        rule.conditions.back().id = 0;
    });
}

void PlainRules::RemoveConditions(const CString& category, const Positions& positions,
                                  const CString& attribute)
{
    ChangeThose(In(category), positions, [&](Rule& rule) {
        for (std::size_t i = rule.conditions.size(); i-- > 0;)
            if (rule.conditions[i].attribute == attribute)
                rule.conditions.erase(rule.conditions.begin() + Step(i));
    });
}

void PlainRules::ReplaceBill(const Places& places, const CString& number, const QdStruct& record, bool wholly)
{
    for (const auto& [category, positions] : places)
        for (const std::size_t position : positions)
            for (BillItem& bill : In(category)[position].bills) {
                if (bill.record.strQdId != number) continue;
                const QdStruct former = bill.record;
                bill.record = record;
                if (!wholly) bill.record.strFormula = former.strFormula;
                if (!wholly) bill.record.strAnnex = former.strAnnex;
            }
}

void PlainRules::ReplaceQuota(const Places& places, const CString& number, const DeStruct& record,
                              bool wholly)
{
    for (const auto& [category, positions] : places)
        for (const std::size_t position : positions) {
            Rule& rule = In(category)[position];
            std::vector<QuotaItem*> quotas;
            for (QuotaItem& quota : rule.quotas)
                quotas.push_back(&quota);
            for (BillItem& bill : rule.bills)
                for (QuotaItem& quota : bill.quotas)
                    quotas.push_back(&quota);
            for (QuotaItem* quota : quotas) {
                if (quota->record.strDeId != number) continue;
                const DeStruct former = quota->record;
                quota->record = record;
                if (!wholly) quota->record.strFormula = former.strFormula;
                if (!wholly) quota->record.strAnnex = former.strAnnex;
            }
        }
}

void PlainRules::SetFormula(const Places& places, const CString& number, const CString& formula)
{
    for (const auto& [category, positions] : places)
        for (const std::size_t position : positions) {
            Rule& rule = In(category)[position];
            for (BillItem& bill : rule.bills) {
                if (bill.record.strQdId == number) bill.record.strFormula = formula;
                for (QuotaItem& quota : bill.quotas)
                    if (quota.record.strDeId == number) quota.record.strFormula = formula;
            }
            for (QuotaItem& quota : rule.quotas)
                if (quota.record.strDeId == number) quota.record.strFormula = formula;
        }
}

void PlainRules::Series(const CString& category, std::size_t position, const rules::SeriesPlan& plan,
                        bool replaces)
{
    Rule pattern = In(category)[position];
    const bool isDefault = pattern.isDefault;
    if (isDefault) pattern.conditions.clear();
    pattern.isDefault = false;
    List made;
    const auto make = [&](const Condition& condition) {
        Rule rule = pattern;
        rule.conditions.clear();
        bool isThere = false;
        for (const Condition& known : pattern.conditions) {
            if (known.attribute != plan.attribute) rule.conditions.push_back(known);
            if (known.attribute == plan.attribute && !isThere) rule.conditions.push_back(condition);
            isThere = isThere || known.attribute == plan.attribute;
        }
        if (!isThere) rule.conditions.push_back(condition);
        made.push_back(AsNew(rule, ++m_highest[category]));
    };
    Condition condition;
    condition.attribute = plan.attribute;
    condition.isValueForm = plan.form == rules::SeriesForm::Values;
    const bool isUpper = plan.form == rules::SeriesForm::UpperClosed;
    for (qsizetype i = 0; i <= plan.values.size(); ++i) {
        if (condition.isValueForm) {
            condition.equalOperator = u"＝"_s;
            condition.value = plan.values.value(i);
            if (i < plan.values.size()) make(condition);
            continue;
        }
        condition.lowerOperator = isUpper ? u"＞"_s : u"≥"_s;
        condition.upperOperator = isUpper ? u"≤"_s : u"＜"_s;
        condition.lowerBound = plan.values.value(i - 1);
        condition.upperBound = plan.values.value(i);
        const bool isFirst = i == 0;
        const bool isLast = i == plan.values.size();
        if ((isFirst || isLast) && !(isFirst == isUpper ? plan.withOpenEnds : plan.withRest)) continue;
        make(condition);
    }
    List& list = In(category);
    if (replaces && !isDefault) list.erase(list.begin() + Step(position));
    const std::size_t at = isDefault || replaces ? position : position + 1;
    list.insert(list.begin() + Step(at), made.begin(), made.end());
}

} // namespace test
