#pragma once

#include "tables/TableWriter.h"

#include <memory>

namespace tables {

/// A writer for a file: XLSX for a path that ends in .xlsx, in any letter case, else CSV (UTF-8 with byte
/// order mark). Raises `TableError` when the file cannot be written, and for endings of workbooks that are
/// not written.
std::unique_ptr<TableWriter> CreateTable(const CString& path, const WriteOptions& options = {});

} // namespace tables
