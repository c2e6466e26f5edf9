#pragma once

class QAbstractItemView;

namespace dialogs {

/// From now on an item of `view` that is too narrow for its text shows the whole text in a tool tip. For
/// views whose items have no tips of their own.
void ShowTipsOfCutTexts(QAbstractItemView& view);

} // namespace dialogs
