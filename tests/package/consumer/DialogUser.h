#pragma once

#include <platform/Window.h>

#include <QtCore/QString>

/// What a person does in the configuration dialog.
namespace user {

/// Presses the button of that caption; false when there is none.
bool Press(CWnd& window, const QString& caption);

/// Selects the category of that name in the tree; false when there is none.
bool SelectCategory(CWnd& dialog, const QString& name);

/// Picks the first item of the picker, which must be open, and takes the number that is proposed for it;
/// false when no picker is open.
bool PickTheFirstItem(CWnd& dialog);

} // namespace user
