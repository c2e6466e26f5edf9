#pragma once

#include "rules/bill/BillBuilder.h"

#include <vector>

namespace shared {

/// What the columns of a bill are called wherever one is shown, printed or written.
namespace billheading {

inline constexpr QStringView Serial = u"序号";
inline constexpr QStringView Number = u"项目编码";
inline constexpr QStringView Name = u"项目名称";
inline constexpr QStringView Features = u"项目特征描述";
inline constexpr QStringView Unit = u"计量单位";
inline constexpr QStringView Quantity = u"工程量";
inline constexpr QStringView Note = u"备注";

} // namespace billheading

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
