#pragma once

#include "embedded/data/engine/Progress.h"
#include "embedded/data/exchange/ImportReport.h"
#include "embedded/data/exchange/TableKind.h"

/// Data of one's own: tables of a project's catalogue as CSV files or workbooks. docs/data.md tells the
/// columns.
namespace embedded {

struct ImportOptions
{
    /// The table becomes what the file holds. Otherwise the rows of the file are added to it, or take the
    /// place of those with the same key. A file without rows replaces no table that has some.
    bool replace = false;
    /// Of a bill, quota or guide table the code of the library; empty means the one that the project uses,
    /// for quotas and guides in its present mode. Other tables belong to no library.
    CString library{};
    /// Of a workbook the sheet with the table; empty means the first one.
    CString sheet{};
    /// Only tells what the import would do: the report has everything but `stored`, and nothing has changed.
    bool isTrial = false;
};

/// Reads a CSV file or a workbook (XLSX, ODS) into the catalogue of a project, in one transaction: after a
/// refused row, a cancel, a full disk or the end of the process the old data stand whole. Whoever has the
/// project open sees the new data after opening it again. A project on an office takes the file into the
/// office's catalogue, for all of its projects, and its copy follows; a trial only looks at the copy. Raises
/// `RightsError` for users who are no keepers of the office and `UnreachableError` without its server; a
/// server that goes in the middle of the commit may have done it or not. Raises `Error` when there is no
/// project or no such library, the file cannot be read, is no text or has no such sheet, or the catalogue is
/// damaged, newer, locked by another program for longer than the busy timeout, or cannot be written.
ImportReport Import(const QString& nativeProject, TableKind kind, const QString& nativeFile,
                    const ImportOptions& options = {}, const Progress& progress = {});

/// A table of a project's catalogue, as the office now has it if that can be reached, as the text of a CSV
/// file; `library` as for an import. Raises `Error`.
CString ExportText(const QString& nativeProject, TableKind kind, const CString& library = {});

/// Writes a table of a project's catalogue to a workbook for a name that ends in .xlsx, else to a CSV file
/// (UTF-8 with byte order mark), replacing a file that stands there; until all of the new one is on the disk,
/// the old one stays. `Import` of that file, with or without `replace`, changes nothing. Gives the library
/// whose table it is, all empty for a table of no library. Raises `Error`, and `Cancelled` when `progress`
/// asks for it; the old file stands then, too.
LibraryName Export(const QString& nativeProject, TableKind kind, const QString& nativeFile,
                   const CString& library = {}, const Progress& progress = {});

} // namespace embedded
