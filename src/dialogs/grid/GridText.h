#pragma once

#include "platform/Text.h"

/// Texts on their way into and out of a grid.
namespace grid {

/// `text` without the characters that no rule file can hold: control characters, unpaired surrogates, U+FFFE
/// and U+FFFF. Tab and line ends stay.
CString WithoutForbidden(const CString& text);

/// Rows of cells as text that a spreadsheet understands: tabs between cells, line feeds between rows; a cell
/// with a tab, a line end or a quote stands in quotes, its own quotes doubled.
CString ToTabbedText(const CArray<CStringArray>& rows);

/// The reverse, for texts of any line end. One line end at the very end does not begin another row. A quote
/// inside an unquoted cell stands for itself. Empty text has no rows.
CArray<CStringArray> FromTabbedText(const CString& text);

} // namespace grid
