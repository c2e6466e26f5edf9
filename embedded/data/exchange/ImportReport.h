#pragma once

#include "embedded/data/catalogue/LibraryName.h"

namespace embedded {

/// A row that was refused, or a fault of the whole file.
struct RefusedRow
{
    int line = 0; ///< one-based line of the file on which the row begins; 0 for what concerns no line
    CString reason;
};

/// What an import did, or what a trial of it would do. Either all of the file has been stored or nothing.
struct ImportReport
{
    bool stored = false;
    bool cancelled = false;
    int rows = 0; ///< rows of the file, without the header
    int added = 0;
    int changed = 0;
    int removed = 0;            ///< by replacing
    CArray<RefusedRow> refused; ///< in the order of the file
    CStringArray changedRows;   ///< which rows of the table became others, and how, each as a line
    CStringArray removedRows;   ///< which went, each as a line
    CStringArray notes;         ///< what else went because it hung on something removed
    LibraryName library;        ///< whose table it is; all empty for a table of no library
};

} // namespace embedded
