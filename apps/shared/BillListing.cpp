#include "shared/BillListing.h"

#include <algorithm>
#include <tuple>

using namespace Qt::StringLiterals;

namespace shared {

namespace {

CString NoteOn(const rules::BillRow& row)
{
    CStringArray notes;
    if (row.missing > 0) notes.append(u"%1 个构件缺工程量"_s.arg(row.missing));
    if (row.numberRepeated) notes.append(u"编码重复"_s);
    if (row.withFittings) notes.append(u"带管道配件"_s);
    return notes.join(u'，');
}

} // namespace

std::vector<BillLine> LinesOf(const rules::Bill& bill, rules::PricingMode mode)
{
    std::vector<BillLine> lines;
    int serial = 0;
    for (const std::uint32_t index : bill.order) {
        const rules::BillRow& row = bill.rows[index];
        lines.push_back({&row, index, ++serial, mode == rules::PricingMode::Quota, NoteOn(row)});
        std::vector<const rules::BillRow*> quotas;
        for (const rules::BillRow& quota : row.quotas)
            quotas.push_back(&quota);
        std::sort(quotas.begin(), quotas.end(), [](const auto* a, const auto* b) {
            return std::tie(a->number, a->name, a->unit) < std::tie(b->number, b->name, b->unit);
        });
        for (const rules::BillRow* quota : quotas)
            lines.push_back({quota, index, 0, true, NoteOn(*quota)});
    }
    return lines;
}

} // namespace shared
