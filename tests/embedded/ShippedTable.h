#pragma once

#include "platform/Text.h"

#include <QtCore/QHash>

#include <vector>

namespace test {

/// A row of a table of data/, by column name.
using TableRow = QHash<CString, CString>;

/// The rows of a table of the source tree's data/ folder, such as "specialties". A table that cannot be read
/// ends the test by an exception.
std::vector<TableRow> ShippedTable(const CString& name);

/// Those that belong to an item set.
std::vector<TableRow> ShippedRows(const CString& name, const CString& items);

/// Specialty, big and small category of a row of "small_categories", joined by backslashes.
CString FullName(const TableRow& smallCategory);

} // namespace test
