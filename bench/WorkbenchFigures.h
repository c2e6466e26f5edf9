#pragma once

#include <QtCore/QString>

/// The workbench of the editor, measured until it is painted. No host may be installed: each figure opens the
/// project as the editor does.
namespace bench {

/// Opening the generated rule file of six specialties, against opening the module's store on it and filling a
/// plain table of the toolkit with as many lines.
bool WorkbenchOpen(const QString& project, int rounds);

/// A character typed into the search over 20,000 rules, against a frame of a 60 Hz screen.
bool WorkbenchFilter(const QString& project, int rounds);

/// A change of one rule in a category of 5,000 with all its findings, against a tenth of a second.
bool WorkbenchEdit(const QString& project, int rounds);

} // namespace bench
