#pragma once

#include "rules/bill/BillBuilder.h"

#include <limits>
#include <vector>

namespace cli {

/// A row of the bill as it is shown and written: a bill row, or a quota row below its bill row.
struct BillLine
{
    const rules::BillRow* row = nullptr; ///< of the bill
    std::uint32_t index = 0;             ///< of a bill row, its index in `Bill::rows`
    int serial = 0;                      ///< 序号, from 1; 0 for a quota item below a bill row
    bool isQuota = false;
    CString note; ///< what somebody should look at
};

/// The lines of a bill in the order in which a bill lists them. The bill must outlive them.
std::vector<BillLine> LinesOf(const rules::Bill& bill, rules::PricingMode mode);

/// The bill as a table for a terminal, `groupBy` being the columns by which it is divided. Only the first
/// lines where there are more than `most`.
CString BillTable(const rules::Bill& bill, rules::PricingMode mode, const CStringArray& groupBy,
                  std::size_t most = std::numeric_limits<std::size_t>::max());

} // namespace cli
