#pragma once

#include "rules/model/Configuration.h"

#include <vector>

namespace editor {

class WorkSession;

/// Rules as text that workbooks and editors exchange by the clipboard: the lines of a table of rules
/// (docs/rule-sheets.md), cells divided by tabs, a cell of several lines in quotation marks.

/// The table of some rules of the chosen category. What no cell can say makes them plain lines as the rule
/// list shows them.
CString TableTextOf(const std::vector<rules::Rule>& rules, const WorkSession& session);

/// Whether a text is such a table, by its headings.
bool IsTableText(const CString& text);

/// The rules of a table's lines for the chosen category, whichever category the lines name; without ids.
/// Items get what the libraries or other rules of the file know of them. What is wrong is told in `faults`,
/// all of it, and the result is not to be used then.
std::vector<rules::Rule> RulesOfTableText(const CString& text, const WorkSession& session,
                                          CStringArray& faults);

} // namespace editor
