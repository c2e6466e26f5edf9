#pragma once

#include "embedded/data/exchange/KeyedTable.h"

namespace embedded {

/// The table of quota items, keyed by their numbers. The last column holds the numbers of the bill items that
/// an item usually stands under, joined by commas: the guide.
KeyedTable GuideTable();

/// The bill items of a row of that table.
CStringArray BillsOf(const CStringArray& quota);

/// Takes the bill items for which `stays` is false out of the guide. Gives how many places they had there.
qsizetype LeaveOutOfGuide(KeyedTable& guide, const std::function<bool(const CString& bill)>& stays);

/// The note of a report on guides that went, or none for 0.
CStringArray NoteOfGuides(qsizetype count);

} // namespace embedded
