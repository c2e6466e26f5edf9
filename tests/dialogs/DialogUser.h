#pragma once

#include "dialogs/template/TemplateDialog.h"

namespace test {

/// What a user does at a dialog: clicks and keys at the controls of those ids. A click at a control that is
/// hidden or disabled does nothing, as on a screen.

/// Makes the dialog's controls and shows it without waiting for its end.
void Open(dialogs::TemplateDialog& dialog);

void Click(const dialogs::TemplateDialog& dialog, int id);

/// Clicks a line of a list box.
void ClickLine(const dialogs::TemplateDialog& dialog, int id, int line);

/// Replaces the text of an edit field, key by key.
void Type(const dialogs::TemplateDialog& dialog, int id, const CString& text);

/// Presses a key where the focus is.
void Press(dialogs::TemplateDialog& dialog, Qt::Key key);

/// The lines of a list box from the top.
CStringArray Lines(const dialogs::TemplateDialog& dialog, int id);

/// The entries of a combo from the top.
CStringArray Entries(const dialogs::TemplateDialog& dialog, int id);

} // namespace test
