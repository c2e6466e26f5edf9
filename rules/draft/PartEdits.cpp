#include "rules/draft/EditTools.h"
#include "rules/draft/PartNumbers.h"
#include "rules/draft/RuleEdits.h"
#include "rules/match/CellText.h"

#include <algorithm>

using namespace Qt::StringLiterals;

// Changes of the conditions and items of several rules at once.

namespace rules {

namespace {

/// Lets `change` change each of the rules, gives new parts their ids and joins all of it.
template <typename Change>
Edit ChangeEach(const Draft& draft, const RulePlaces& places, const CString& text, Change change)
{
    Edit edit{text, {}};
    for (const auto& [name, positions] : places) {
        const SmallCategoryPtr category = CategoryOf(draft, name);
        AppendChanges(
            *category, PlacesIn(*category, positions),
            [&](Rule& rule) {
                const Rule former = rule;
                change(rule);
                NumberParts(rule, former);
            },
            edit);
    }
    return edit;
}

bool Concerns(const Condition& condition, const CString& attribute)
{
    return Normalised(condition.attribute) == Normalised(attribute);
}

/// What an attribute is to be, as a menu tells it.
CString ConditionTold(const Condition& condition)
{
    if (!condition.isValueForm) return condition.Text();
    return condition.equalOperator == u"＝" ? condition.value : condition.equalOperator + condition.value;
}

template <typename Record>
void Replace(Record& present, Record record, bool wholly)
{
    if (!wholly) {
        record.strFormula = present.strFormula;
        record.strAnnex = present.strAnnex;
    }
    present = std::move(record);
}

/// Calls `change` with the record of every quota item of that number.
template <typename Change>
void ForEachQuota(Rule& rule, const CString& number, Change change)
{
    const auto look = [&](std::vector<QuotaItem>& quotas) {
        for (QuotaItem& quota : quotas)
            if (quota.record.strDeId == number) change(quota.record);
    };
    for (BillItem& bill : rule.bills)
        look(bill.quotas);
    look(rule.quotas);
}

template <typename Change>
void ForEachBill(Rule& rule, const CString& number, Change change)
{
    for (BillItem& bill : rule.bills)
        if (bill.record.strQdId == number) change(bill.record);
}

/// 清单 031001001 换为 031001002; of one number what it says is changed.
CString Replaced(const CString& kind, const CString& number, const CString& other)
{
    return number == other ? u"修改%1 %2"_s.arg(kind, number) : u"%1 %2 换为 %3"_s.arg(kind, number, other);
}

} // namespace

Edit SetCondition(const Draft& draft, const CString& category, const std::vector<std::size_t>& positions,
                  const Condition& condition)
{
    const CString text = u"%1改为 %2"_s.arg(condition.attribute, ConditionTold(condition));
    return ChangeEach(draft, {{category, positions}}, text, [&](Rule& rule) {
        if (rule.isDefault) return;
        Condition wanted = condition;
        const auto present =
            std::find_if(rule.conditions.begin(), rule.conditions.end(),
                         [&](const Condition& known) { return Concerns(known, condition.attribute); });
        if (present == rule.conditions.end()) {
            wanted.id = 0;
            rule.conditions.push_back(std::move(wanted));
        } else {
            wanted.id = present->id;
            *present = std::move(wanted);
        }
    });
}

Edit RemoveConditions(const Draft& draft, const CString& category, const std::vector<std::size_t>& positions,
                      const CString& attribute)
{
    return ChangeEach(draft, {{category, positions}}, u"去掉%1的条件"_s.arg(attribute), [&](Rule& rule) {
        std::erase_if(rule.conditions,
                      [&](const Condition& condition) { return Concerns(condition, attribute); });
    });
}

Edit ReplaceBill(const Draft& draft, const RulePlaces& places, const CString& number, const QdStruct& record,
                 bool wholly)
{
    return ChangeEach(draft, places, Replaced(u"清单"_s, number, record.strQdId), [&](Rule& rule) {
        ForEachBill(rule, number, [&](QdStruct& present) { Replace(present, record, wholly); });
    });
}

Edit ReplaceQuota(const Draft& draft, const RulePlaces& places, const CString& number, const DeStruct& record,
                  bool wholly)
{
    return ChangeEach(draft, places, Replaced(u"定额"_s, number, record.strDeId), [&](Rule& rule) {
        ForEachQuota(rule, number, [&](DeStruct& present) { Replace(present, record, wholly); });
    });
}

Edit SetFormula(const Draft& draft, const RulePlaces& places, const CString& number, const CString& formula)
{
    return ChangeEach(draft, places, u"%1 的计算式改为 %2"_s.arg(number, formula), [&](Rule& rule) {
        const auto set = [&](auto& record) { record.strFormula = formula; };
        ForEachBill(rule, number, set);
        ForEachQuota(rule, number, set);
    });
}

} // namespace rules
