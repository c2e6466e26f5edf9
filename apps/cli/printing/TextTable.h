#pragma once

#include "platform/Text.h"

namespace cli {

/// The columns that a text takes in a terminal: wide East Asian characters take two, combining marks none.
int DisplayWidth(const CString& text);

/// Rows of texts in aligned columns, two blanks between them. The last column is not padded, and neither is
/// the end of a row.
class TextTable
{
public:
    void AddRow(const CStringArray& cells) { m_rows.append(cells); }
    bool IsEmpty() const { return m_rows.isEmpty(); }
    /// The rows, one a line, each behind `indent` blanks. Line breaks in a cell become blanks.
    CString ToText(int indent) const;

private:
    CArray<int> ColumnWidths() const;

    CArray<CStringArray> m_rows;
};

} // namespace cli
