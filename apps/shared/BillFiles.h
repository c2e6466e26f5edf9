#pragma once

#include "shared/TakeoffRun.h"
#include "tables/TableWriter.h"

#include <functional>

/// A bill of quantities as a file. What stood at the path stays whole until the file is complete, and for
/// ever when something is raised.
namespace shared {

/// The bill alone, as CSV. Raises `tables::TableError`.
void WriteBillCsv(const CString& path, const rules::Bill& bill, const rules::TakeoffJob& job);

/// A workbook: the bill with its quotas, every component with its rule and its rows of the bill, and what
/// somebody should look at; `putMore` adds further sheets. Reads the table again. Raises what
/// `TakeoffPricing` raises, and `tables::TableError`.
void WriteBillWorkbook(const CString& path, rules::TakeoffPricing& pricing,
                       const embedded::Progress& progress,
                       const std::function<void(tables::TableWriter&)>& putMore = {});

} // namespace shared
