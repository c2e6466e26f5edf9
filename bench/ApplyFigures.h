#pragma once

#include <QtCore/QString>

namespace bench {

/// A take-off table of the plumbing sample's components, over and over with ids of their own, priced by the
/// sample's rules. Each prints its line and tells whether the bar is met; `folder` has room for the tables.

/// 1,000,000 components from a CSV file to a bill, against going over that file with the program's own reader
/// of tables.
bool Apply(const QString& folder, int rounds);

/// The peak of memory with 10,000,000 components, against that with 1,000,000, each in a process of its own.
bool ApplyMemory(const QString& folder, const QString& program);

/// The work of such a process: prices the table at a native path and prints the peak in bytes.
int RunApplyChild(const QString& table);

} // namespace bench
