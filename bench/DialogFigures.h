#pragma once

#include "embedded/windows/ItemModel.h"
#include "platform/Text.h"

#include <vector>

/// Figures of the windows. They need an application object; the first two also a host with windows.
namespace bench {

/// From the choice of a small category with 1,000 rules of three conditions to the painted dialog, against
/// filling the same bare widgets with the same texts. `file` is the native path of a file to be made.
bool CategoryChange(const QString& file, int rounds);

/// From the click on the button that adds a condition to the painted dialog, in a small category with 5,000
/// rules, against a frame of a screen of 10 Hz: below a tenth of a second a program feels immediate. `file`
/// as above.
bool AddCondition(const QString& file, int rounds);

/// From the start of a process to its first painted dialog, against a bare dialog with as many controls.
/// `project` is the folder of a project, whose current rule file the dialog shows.
bool Start(const QString& program, const QString& project, int rounds);

/// What the processes of `Start` do: show a dialog, ours or the bare one, and end at its first paint, at
/// once: what a closing dialog does belongs to no start. Ours needs a host with windows.
void ShowConfigDialog();
void ShowBareDialog();

/// How long the editor's windows stand still at the longest while the module opens `path` and saves it again,
/// against a fifth of a second. `path` is the path text of a large rule file.
bool Still(const CString& path, int rounds);

/// A character typed into the search field over 10,000 items, until the list is painted, against a frame of a
/// screen of 60 Hz.
bool Search(int rounds);
/// The same over the items of a library, as a picker shows them.
bool SearchIn(const char* figure, const std::vector<embedded::PickerItem>& items, int rounds);

} // namespace bench
