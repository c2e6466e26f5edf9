#pragma once

#include "embedded/data/exchange/ImportReport.h"
#include "embedded/data/exchange/ImportRow.h"

namespace embedded {

/// Tells in `report` which rows of a table are others after an import and which are gone. Both lists of rows
/// are in the form of an export: one field per column.
void TellDifference(const CArray<ImportColumn>& columns, const QList<CStringArray>& before,
                    const QList<CStringArray>& after, ImportReport& report);

} // namespace embedded
