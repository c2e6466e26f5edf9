#pragma once

#include <QtCore/QStringList>

/// Figures of an office on a server of their own, which does not wait for the disk.
namespace bench {

/// Each prints its line and tells whether the bar is met. `program` is this one, for the processes beside it.
bool OfficePublish(const QString& folder, const QString& program);
bool OfficeOpen(const QString& folder, int rounds);
/// A character typed into the search over the 10,000 items of an office's library. Needs windows.
bool OfficeSearch(const QString& folder, int rounds);

/// The work of such a process: makes a project and publishes when a line comes. Prints the milliseconds of
/// each publication.
int RunOfficeChild(const QStringList& arguments);

} // namespace bench
