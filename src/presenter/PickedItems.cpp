#include "presenter/PickedItems.h"

#include "host/NvSysRuleData.h"
#include "platform/Numbers.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

CString YesNo(int flag)
{
    return flag != 0 ? u"是"_s : u"否"_s;
}

/// Sets the fields that both kinds of records have in common.
template <typename Record, typename Item>
void FillRecord(Record& record, const Item& item, const CString& formula)
{
    record.strName = item.strName;
    record.strUnit = item.strUnit;
    record.strUnitCode = CString::number(item.nUnitCode);
    record.strFormula = item.strCalRule.isEmpty() ? formula : item.strCalRule;
    record.strAnnex = YesNo(item.nWithAnnex);
}

} // namespace

std::optional<CString> CategoryFormula(const CString& categoryText)
{
    CStringArray items;
    CStringArray other;
    NvSysRuleData::CFaceSysRule::GetCalItems(categoryText, items, other);
    if (items.isEmpty()) return std::nullopt;
    RuleCodeStruct info;
    return NvSysRuleData::CFaceSysRule::GetCalItemInfo(items.first(), info) ? info.strRule : CString();
}

QdStruct RecordOf(const SQdInfo& bill, const CString& number, const CString& library, const CString& formula)
{
    QdStruct record;
    FillRecord(record, bill, formula);
    record.strQdId = number;
    record.strQdCode = library;
    return record;
}

DeStruct RecordOf(const SPickedDe& quota, const CString& library, const CString& formula)
{
    DeStruct record;
    FillRecord(record, quota, formula);
    record.strDeId = quota.strNumber;
    record.strDeCode = library;
    return record;
}

CString UnitCodeOf(const CString& unit)
{
    return CString::number(std::max(platform::_wtol(unit.trimmed()), 1));
}
