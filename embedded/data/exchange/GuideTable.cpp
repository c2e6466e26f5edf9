#include "embedded/data/exchange/GuideTable.h"

namespace embedded {

using namespace Qt::StringLiterals;

KeyedTable GuideTable()
{
    return {u"quota_items"_s,
            {u"number"_s, u"name"_s, u"unit"_s, u"unit_code"_s, u"with_annex"_s, u"cal_rule"_s, u"section"_s,
             u"bills"_s},
            1};
}

CStringArray BillsOf(const CStringArray& quota)
{
    return quota.last().split(u',', Qt::SkipEmptyParts);
}

qsizetype LeaveOutOfGuide(KeyedTable& guide, const std::function<bool(const CString& bill)>& stays)
{
    qsizetype removed = 0;
    const QList<CStringArray> quotas = guide.Rows();
    for (CStringArray quota : quotas) {
        CStringArray bills = BillsOf(quota);
        removed += bills.removeIf([&](const CString& bill) { return !stays(bill); });
        quota.last() = bills.join(u',');
        guide.Put(quota);
    }
    return removed;
}

CStringArray NoteOfGuides(qsizetype count)
{
    if (count == 0) return {};
    return {u"随之去掉的定额指引：%1 条"_s.arg(count)};
}

} // namespace embedded
