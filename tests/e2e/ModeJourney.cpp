#include "e2e/ModeJourney.h"

#include "e2e/ExpectedRule.h"

namespace test {

void ModeJourney::PickItems(const QString& title)
{
    if (GetParam() == SQdDeInfo::BillMode)
        PickBillWithQuota(title, u"031001001"_s);
    else
        PickQuota(title, u"10-1-1"_s);
}

QByteArray ModeJourney::ItemRule()
{
    return GetParam() == SQdDeInfo::BillMode ? BillRule() : QuotaRule();
}

} // namespace test
