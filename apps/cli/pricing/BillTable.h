#pragma once

#include "rules/bill/BillBuilder.h"

#include <limits>

namespace cli {

/// The bill as a table for a terminal, `groupBy` being the columns by which it is divided. Only the first
/// lines where there are more than `most`.
CString BillTable(const rules::Bill& bill, rules::PricingMode mode, const CStringArray& groupBy,
                  std::size_t most = std::numeric_limits<std::size_t>::max());

} // namespace cli
