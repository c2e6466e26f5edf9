#pragma once

#include "cli/pricing/BillChange.h"

/// A bill of quantities as a file. What stood at the path stays whole until the file is complete, and for
/// ever when something is raised.
namespace cli {

/// The bill alone, as CSV. Raises `tables::TableError`.
void WriteBillCsv(const CString& path, const rules::Bill& bill, const TakeoffJob& job);

/// A workbook: the bill with its quotas, every component with its rule and its rows of the bill, and what
/// somebody should look at; and what another configuration changes, if there is one. Reads the table again.
/// Raises what `TakeoffPricing` raises, and `tables::TableError`.
void WriteBillWorkbook(const CString& path, rules::TakeoffPricing& pricing,
                       const embedded::Progress& progress, BillChange* change = nullptr);

} // namespace cli
