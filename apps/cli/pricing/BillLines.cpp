#include "cli/pricing/BillLines.h"

#include "cli/printing/TextTable.h"

#include <algorithm>
#include <tuple>

using namespace Qt::StringLiterals;

namespace cli {

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

CString BillTable(const rules::Bill& bill, rules::PricingMode mode, const CStringArray& groupBy,
                  std::size_t most)
{
    std::vector<BillLine> lines = LinesOf(bill, mode);
    const std::size_t left = lines.size() - std::min(lines.size(), most);
    lines.resize(lines.size() - left);
    TextTable table;
    table.AddRow(groupBy + CStringArray{u"序号"_s, u"项目编码"_s, u"项目名称"_s, u"项目特征描述"_s,
                                        u"计量单位"_s, u"工程量"_s, u"备注"_s});
    for (const BillLine& line : lines) {
        const rules::BillRow& row = *line.row;
        CStringArray cells;
        for (const CString& cell : bill.rows[line.index].group)
            cells.append(cell);
        const bool isBelow = line.serial == 0;
        cells += {isBelow ? CString() : CString::number(line.serial),
                  isBelow ? u"  "_s + row.number : row.number,
                  row.name,
                  row.FeatureText(),
                  row.unit,
                  row.quantity.isEmpty() ? u"缺"_s : row.quantity,
                  line.note};
        table.AddRow(cells);
    }
    const CString rest = left == 0 ? CString() : u"……另有 %1 行\n"_s.arg(left);
    return table.ToText(0) + rest;
}

} // namespace cli
