#pragma once

#include "platform/Text.h"
#include "tables/Cell.h"

#include <functional>
#include <memory>

/// Tables as files: CSV, XLSX and ODS are read, CSV and XLSX are written. Knows nothing of what stands in
/// them.
namespace tables {

struct ReadOptions
{
    /// Of a workbook the sheet to read; empty means the first one that is not hidden. A CSV file has none.
    CString sheet{};
    /// Called now and then while a workbook is prepared for reading, which may take seconds. What it raises
    /// travels on.
    std::function<void()> pulse{};
};

/// Reads a table row by row, in memory that does not grow with the number of rows (but for the shared texts
/// of an XLSX workbook). The first row holds the headings; rows of which every cell is empty are passed over
/// in workbooks, empty lines in CSV files. A row of a workbook has at least as many cells as the first one.
class TableReader
{
public:
    virtual ~TableReader();
    TableReader(const TableReader&) = delete;
    TableReader& operator=(const TableReader&) = delete;

    /// The names of the sheets in their order; empty for a CSV file. May read through the whole file. Raises
    /// `TableError`.
    virtual CStringArray Sheets() = 0;
    /// The sheet that is read; empty for a CSV file.
    virtual CString Sheet() const = 0;
    /// The next row, valid until the next call; null at the end. Raises `TableError` for a file that is
    /// broken, is no text, or has what no table can have; reading cannot go on then.
    virtual const Row* Next() = 0;
    /// How much of the file is behind the reader, from 0 to 1.
    virtual double Progress() const = 0;

protected:
    TableReader();
};

/// Opens a table; what the file holds decides of which kind it is. Raises `TableError` when the file cannot
/// be read, is no regular file, is a workbook that cannot be read (broken, encrypted, of an old kind) or
/// bears the name of one without being one, or has no such sheet; the text names those that it has.
std::unique_ptr<TableReader> OpenTable(const CString& path, const ReadOptions& options = {});

} // namespace tables
