#include "cli/pricing/BillTable.h"

#include "cli/printing/TextTable.h"
#include "shared/BillListing.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace cli {

CString BillTable(const rules::Bill& bill, rules::PricingMode mode, const CStringArray& groupBy,
                  std::size_t most)
{
    std::vector<shared::BillLine> lines = shared::LinesOf(bill, mode);
    const std::size_t left = lines.size() - std::min(lines.size(), most);
    lines.resize(lines.size() - left);
    TextTable table;
    namespace heading = shared::billheading;
    CStringArray headings = groupBy;
    for (const QStringView text : {heading::Serial, heading::Number, heading::Name, heading::Features,
                                   heading::Unit, heading::Quantity, heading::Note})
        headings.append(text.toString());
    table.AddRow(headings);
    for (const shared::BillLine& line : lines) {
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
