#pragma once

#include "rules/model/Configuration.h"

#include <optional>

/// Conditions as the cells of a table: ＝X, ≠X, 50＜..≤65, ＞50, ≤65.
namespace rules {

/// The cell that says a condition of its column's attribute; nothing for one that no cell says: an unknown
/// operator, a bound that would be read as something else, a range without bounds.
std::optional<CString> CellOf(const Condition& condition);

/// The condition that a cell says. A text without an operator is a value: X says ＝X. ASCII operators (=, !=,
/// <>, <, <=,
/// >, >=) count as the others. Nothing for a range that is none.
std::optional<Condition> ConditionOf(const CString& attribute, const CString& cell);

} // namespace rules
