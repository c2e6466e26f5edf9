#pragma once

#include "rules/sql/Column.h"
#include "rules/sql/StepList.h"

namespace rules {

/// The query's own name for the components table.
inline const CString SourceName = QStringLiteral("t");
/// The column of the query with the number of the component's category.
inline const CString CategoryName = QStringLiteral("category_number");

/// An expression of the table's column: its text without blanks around it, empty where there is none.
CString CellExpression(const CString& column, const Dialect& dialect);

/// The names of the steps that read these columns.
CStringArray ReadingStepNames(const std::vector<Column>& columns);

/// Lets the steps read a column. At their end three whole numbers tell all that conditions ask:
///
/// - t, the text: the number of the value that the cell equals as a text, 0 for none, -1 for an empty cell;
/// - n: the number of the value that is the same plain number, 0 for none;
/// - r, the elementary range: 2i+1 is bound i itself, 2i lies below it; -1 for what is no number.
///
/// On the way there: x the cell, s whether it is settled, d and y the cell with characters replaced as it is
/// compared as a text and read as a number, f the form of the number, 0 for a plain one, m the number with
/// its sign, u without, z without idle zeros, k a text by which numbers are in their order.
void AddReadingSteps(StepList& steps, const Column& column, const Dialect& dialect);

} // namespace rules
