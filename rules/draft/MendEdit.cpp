#include "rules/draft/MendEdit.h"

#include "platform/Numbers.h"
#include "rules/draft/EditTools.h"
#include "rules/draft/RuleEdits.h"

#include <algorithm>
#include <map>
#include <optional>

using namespace Qt::StringLiterals;

namespace rules {

namespace {

/// The first entry with that id; null when there is none.
template <typename Entry>
Entry* FindId(std::vector<Entry>& entries, int id)
{
    const auto found =
        std::find_if(entries.begin(), entries.end(), [id](const Entry& entry) { return entry.id == id; });
    return found == entries.end() ? nullptr : &*found;
}

template <typename Entry>
bool Erase(std::vector<Entry>& entries, const std::vector<int>& ids)
{
    return std::erase_if(entries, [&](const Entry& entry) {
               return std::find(ids.begin(), ids.end(), entry.id) != ids.end();
           }) > 0;
}

/// The eight texts of a condition.
enum ConditionText : qsizetype {
    Attribute,
    Flag,
    EqualOperator,
    LowerOperator,
    UpperOperator,
    Value,
    Lower,
    Upper
};

void Take(const CStringArray& texts, Condition& condition)
{
    condition.attribute = texts.value(Attribute);
    condition.isValueForm = platform::_wtoi(texts.value(Flag)) != 0;
    condition.equalOperator = texts.value(EqualOperator);
    condition.lowerOperator = texts.value(LowerOperator);
    condition.upperOperator = texts.value(UpperOperator);
    condition.value = texts.value(Value);
    condition.lowerBound = texts.value(Lower);
    condition.upperBound = texts.value(Upper);
}

// Each does one operation to a rule, and gives its words; nothing where what it is about is not there.
using Told = std::optional<CString>;

Told ResetCondition(Rule& rule, const Mend& mend)
{
    Condition* const condition = FindId(rule.conditions, mend.conditionId);
    if (condition == nullptr) return std::nullopt;
    Take(mend.array, *condition);
    return u"条件改为 %1"_s.arg(condition->Text());
}

Told ResetBill(Rule& rule, const Mend& mend)
{
    BillItem* const bill = FindId(rule.bills, mend.qdId);
    if (bill == nullptr || !mend.qd) return std::nullopt;
    bill->record = *mend.qd;
    return u"修改清单 %1"_s.arg(bill->record.strQdId);
}

Told ResetQuota(std::vector<QuotaItem>& quotas, const Mend& mend)
{
    QuotaItem* const quota = FindId(quotas, mend.deId);
    if (quota == nullptr || !mend.de) return std::nullopt;
    quota->record = *mend.de;
    return u"修改定额 %1"_s.arg(quota->record.strDeId);
}

Told ResetQuotaOfBill(Rule& rule, const Mend& mend)
{
    BillItem* const bill = FindId(rule.bills, mend.qdId);
    return bill == nullptr ? std::nullopt : ResetQuota(bill->quotas, mend);
}

Told ResetQuotaOfRule(Rule& rule, const Mend& mend)
{
    return ResetQuota(rule.quotas, mend);
}

Told DeleteBills(Rule& rule, const Mend& mend)
{
    return Erase(rule.bills, mend.ids) ? Told(u"删除清单"_s) : std::nullopt;
}

Told DeleteQuotasOfRule(Rule& rule, const Mend& mend)
{
    return Erase(rule.quotas, mend.ids) ? Told(u"删除定额"_s) : std::nullopt;
}

Told DeleteQuotasOfBills(Rule& rule, const Mend& mend)
{
    bool isAny = false;
    for (const auto& [billId, ids] : mend.deIdsByQd)
        if (BillItem* const bill = FindId(rule.bills, billId)) isAny = Erase(bill->quotas, ids) || isAny;
    return isAny ? Told(u"删除定额"_s) : std::nullopt;
}

/// By the words that batches have for them.
const std::map<CString, Told (*)(Rule&, const Mend&)>& Operations()
{
    static const std::map<CString, Told (*)(Rule&, const Mend&)> operations{
        {u"ResetCondition"_s, ResetCondition},
        {u"ResetQd"_s, ResetBill},
        {u"ResetDeToQd"_s, ResetQuotaOfBill},
        {u"ResetDeToConfig"_s, ResetQuotaOfRule},
        {u"DelQd"_s, DeleteBills},
        {u"DelDeInConfigNode"_s, DeleteQuotasOfRule},
        {u"DelDeInQdNode"_s, DeleteQuotasOfBills},
    };
    return operations;
}

/// Default rules included: of several all but the first may go.
Edit WithoutRule(const SmallCategory& category, std::size_t place)
{
    ListChange change(category);
    change.KeepRange(0, place);
    change.KeepRange(place + 1, category.rules.size());
    Edit edit{u"删除规则"_s, {}};
    change.AppendTo(edit);
    return edit;
}

} // namespace

Edit MendEdit(const Draft& draft, const Finding& finding)
{
    const SmallCategoryPtr category = draft.Find(finding.category);
    if (!finding.mend || !category) return {};
    const Mend& mend = *finding.mend;
    const auto found = std::find_if(category->rules.begin(), category->rules.end(),
                                    [&](const Rule& rule) { return rule.id == mend.configId; });
    if (found == category->rules.end()) return {};
    const auto place = static_cast<std::size_t>(found - category->rules.begin());
    if (mend.op == u"DelConfig") return WithoutRule(*category, place);
    const auto operation = Operations().find(mend.op);
    if (operation == Operations().end()) return {};
    Rule changed = *found;
    const Told text = operation->second(changed, mend);
    return text ? ChangeRule(draft, category->text, place, std::move(changed), *text) : Edit();
}

} // namespace rules
