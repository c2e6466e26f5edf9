#pragma once

#include "tables/ZipReader.h"

#include <QtCore/QHash>

#include <vector>

namespace tables {

/// The parts of an XLSX workbook that its reader needs.
struct XlsxParts
{
    struct Sheet
    {
        CString name;
        CString part;
        bool isHidden = false;
    };

    std::vector<Sheet> sheets; ///< worksheets only, in their order
    CString strings;           ///< part with the shared texts; empty for none
    CString styles;            ///< part with the formats; empty for none
    bool countsFrom1904 = false;
};

/// Raises `TableError`.
XlsxParts ReadXlsxParts(ZipReader& zip);

} // namespace tables
