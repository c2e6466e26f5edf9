#include "cli/batch/RecordCompletion.h"

#include "cli/reading/CategoryLists.h"
#include "host/NvKtDataMng.h"
#include "host/NvQdInfo.h"
#include "presenter/PickedItems.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace cli {

namespace {

/// What a library says about an item, as texts of a record.
struct LibraryItem
{
    CString name;
    CString unit;
    int unitCode = 1;
    bool withAnnex = false;
    CString calRule;
};

LibraryItem ItemOf(const SQdInfo& bill)
{
    return {bill.strName, bill.strUnit, bill.nUnitCode, bill.nWithAnnex != 0, bill.strCalRule};
}

LibraryItem ItemOf(const SPickedDe& quota)
{
    return {quota.strName, quota.strUnit, quota.nUnitCode, quota.nWithAnnex != 0, quota.strCalRule};
}

/// Sets the fields that bill and quota items have in common. A unit that the line names has the code of its
/// leading number, as after an edit.
template <typename Record>
void CompleteFields(BatchRequest& request, Record& record, const LibraryItem& item)
{
    const auto lacks = [&](QStringView name) { return !request.named.contains(name.toString()); };
    if (lacks(u"strName")) record.strName = item.name;
    if (lacks(u"strUnit")) record.strUnit = item.unit;
    if (lacks(u"strUnitCode"))
        record.strUnitCode =
            record.strUnit == item.unit ? CString::number(item.unitCode) : UnitCodeOf(record.strUnit);
    if (lacks(u"strFormula"))
        record.strFormula = item.calRule.isEmpty()
                                ? CategoryFormula(CategoryText(request.path)).value_or(CString())
                                : item.calRule;
    if (lacks(u"strAnnex")) record.strAnnex = item.withAnnex ? u"是"_s : u"否"_s;
}

} // namespace

void RecordCompletion::Complete(BatchRequest& request) const
{
    if (request.keys.contains(BatchKey::Qd)) CompleteQd(request);
    if (request.keys.contains(BatchKey::De)) CompleteDe(request);
}

void RecordCompletion::CompleteQd(BatchRequest& request) const
{
    QdStruct& record = request.qd;
    if (!request.named.contains(u"strQdCode"_s)) record.strQdCode = NvKtDataMng::CAtt().GetQdCode();
    if (const SQdInfo* bill = FindBill(record.strQdId)) CompleteFields(request, record, ItemOf(*bill));
}

void RecordCompletion::CompleteDe(BatchRequest& request) const
{
    DeStruct& record = request.de;
    const NvKtDataMng::CAtt project;
    if (!request.named.contains(u"strDeCode"_s))
        record.strDeCode =
            project.GetQdDeMode() == SQdDeInfo::BillMode ? project.GetQdDeCode() : project.GetDeCode();
    if (const SPickedDe* quota = FindQuota(record.strDeId)) CompleteFields(request, record, ItemOf(*quota));
}

const SQdInfo* RecordCompletion::FindBill(const CString& number) const
{
    if (!m_bills) {
        int length = -1;
        int suffixLength = -1;
        NvQdInfo::IBillLib::GetEnCodeRule(length, suffixLength);
        m_bills.emplace(m_host.Contents(), length, suffixLength);
    }
    return m_bills->Find(number);
}

const SPickedDe* RecordCompletion::FindQuota(const CString& number) const
{
    for (const embedded::QuotaSection& section : m_host.Contents().quotas) {
        const auto found = std::find_if(section.items.begin(), section.items.end(),
                                        [&](const auto& item) { return item.record.strNumber == number; });
        if (found != section.items.end()) return &found->record;
    }
    return nullptr;
}

} // namespace cli
