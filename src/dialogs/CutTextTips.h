#pragma once

class QAbstractItemView;
class QLineEdit;

namespace dialogs {

/// From now on an item of `view` that is too narrow for its text shows the whole text in a tool tip. For
/// views whose items have no tips of their own.
void ShowTipsOfCutTexts(QAbstractItemView& view);

/// The same for an edit that is too narrow for its text.
void ShowTipOfCutText(QLineEdit& edit);

} // namespace dialogs
