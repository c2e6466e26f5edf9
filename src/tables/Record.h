#pragma once

#include "tables/TableReader.h"

namespace tables {

/// A row that owns its texts.
struct Record
{
    int line = 0; ///< as of `Row`
    CStringArray fields;
    CString fault; ///< why the row cannot be used: quotes that do not fit, a cell without a value; empty when
                   ///< it can
};

/// Reads a whole table into memory. Raises `TableError`.
CArray<Record> ReadRecords(TableReader& reader);

} // namespace tables
