#pragma once

#include "platform/Text.h"

#include <span>

namespace tables {

enum class CellKind {
    Empty,
    Text,
    Number,  ///< the text is the number in its shortest exact form: 50, 0.1, 30801001001; see NumberText.h
    Boolean, ///< TRUE or FALSE
    Date,    ///< yyyy-MM-dd, yyyy-MM-dd HH:mm:ss or HH:mm:ss
    Error,   ///< the text is the error's name (#REF!), or empty for a formula without a stored value
};

/// A cell as its file has it. The text is the value, whatever the kind: a number cell and a text cell of the
/// same digits have the same text. It belongs to the reader.
struct Cell
{
    QStringView text{};
    CellKind kind = CellKind::Empty;
    bool isFormula = false; ///< of a workbook: the text is the stored result of a formula
};

/// A row as its file has it, until the next one is read.
struct Row
{
    qint64 line = 0; ///< one-based: the line of a CSV file on which it begins, the row of a worksheet
    std::span<const Cell> cells{};
    QStringView record{}; ///< of a CSV file: the text in which all cells lie; null of a workbook
    CString fault{};      ///< of a CSV file: what is wrong with its quotes; empty when nothing is
};

/// The letters by which spreadsheets call a column; 0 is A.
CString ColumnName(qsizetype column);

/// Why a cell holds no value that can be relied on: an error, a formula without a stored value, or a date,
/// which in tables of numbers and names is mostly a number such as 1-2 that a spreadsheet has taken for one.
/// Empty for any other.
CString FaultOf(const Cell& cell);

} // namespace tables
