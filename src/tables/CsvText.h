#pragma once

#include "platform/Text.h"

namespace tables {

/// Spreadsheets take a CSV field that begins with = + - @ (or a tab or line break) for a formula. Such a text
/// is written with an apostrophe before it, by which they take it as text, and read without. So that every
/// text comes back, one that begins with apostrophes before such a character gets one more. A number in its
/// shortest form (-5) is left as it is: it stands for itself.
bool NeedsGuard(QStringView text);

/// The text that a field stands for: without the apostrophe of `NeedsGuard`.
QStringView WithoutGuard(QStringView field);

/// Adds a field of a record, in quotes when it needs them; `text` is what the cell holds.
void AppendCsvText(QStringView text, CString& record);

/// One record of texts with its line end (CR LF).
CString CsvLine(const CStringArray& texts);

} // namespace tables
