#pragma once

#include "embedded/data/Error.h"
#include "embedded/data/LibraryName.h"
#include "embedded/data/Progress.h"

/// Data of one's own: tables of a project's catalogue as CSV files or workbooks. docs/data.md tells the
/// columns.
namespace embedded {

enum class TableKind {
    Catalog,    ///< specialties, big and small categories
    Attributes, ///< attributes of small categories and where their values come from
    Bill,       ///< a bill library
    Quota,      ///< a quota library
    Guide,      ///< which items of a quota library go with a bill item
    Calc,       ///< calculation items with their rules, and the categories that they serve
    Libraries,  ///< the libraries themselves
};

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
};

/// A row that was refused, or a fault of the whole file.
struct RefusedRow
{
    int line = 0; ///< one-based line of the file on which the row begins; 0 for what concerns no line
    CString reason;
};

/// What an import did. Either all of the file has been stored or nothing.
struct ImportReport
{
    bool stored = false;
    bool cancelled = false;
    int rows = 0; ///< rows of the file, without the header
    int added = 0;
    int changed = 0;
    int removed = 0;            ///< by replacing
    CArray<RefusedRow> refused; ///< in the order of the file
    CStringArray notes;         ///< what else went because it hung on something removed
    LibraryName library;        ///< whose table it is; all empty for a table of no library
};

/// Reads a CSV file or a workbook (XLSX, ODS) into the catalogue of a project, in one transaction: after a
/// refused row, a cancel, a full disk or the end of the process the old data stand whole. Whoever has the
/// project open sees the new data after opening it again. Raises `Error` when there is no project or no such
/// library, the file cannot be read, is no text or has no such sheet, or the catalogue is damaged, newer,
/// locked by another program for longer than the busy timeout, or cannot be written.
ImportReport Import(const QString& nativeProject, TableKind kind, const QString& nativeFile,
                    const ImportOptions& options = {}, const Progress& progress = {});

/// A table of a project's catalogue as the text of a CSV file; `library` as for an import. Raises `Error`.
CString ExportText(const QString& nativeProject, TableKind kind, const CString& library = {});

/// Writes a table of a project's catalogue to a workbook for a name that ends in .xlsx, else to a CSV file
/// (UTF-8 with byte order mark), replacing a file that stands there; until all of the new one is on the disk,
/// the old one stays. `Import` of that file, with or without `replace`, changes nothing. Gives the library
/// whose table it is, all empty for a table of no library. Raises `Error`, and `Cancelled` when `progress`
/// asks for it; the old file stands then, too.
LibraryName Export(const QString& nativeProject, TableKind kind, const QString& nativeFile,
                   const CString& library = {}, const Progress& progress = {});

} // namespace embedded
