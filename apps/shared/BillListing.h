#pragma once

#include "rules/bill/BillBuilder.h"

#include <vector>

namespace shared {

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

} // namespace shared
