#pragma once

#include "platform/Text.h"

class QAbstractItemView;
class QLineEdit;
class QModelIndex;
class QPoint;
class QRect;

namespace widgets {

/// `text` as markup for a tip: shown as it stands, whatever looks like markup in it, and broken into lines
/// when it is wide, which the toolkit does for markup only.
CString TipMarkup(const CString& text);

/// Shows the whole text of `item` in a tip at `screenPoint` if the part of its `place` that can be seen is
/// narrower than `neededWidth`. Otherwise, and for no item, a tip that is up goes.
void ShowTipIfCut(QAbstractItemView& view, const QModelIndex& item, const QRect& place, int neededWidth,
                  const QPoint& screenPoint);

/// From now on an item of `view` that is too narrow for its text shows the whole text in a tool tip. For
/// views whose items have no tips of their own; one whose delegate may be chosen takes a `TipDelegate`.
void ShowTipsOfCutTexts(QAbstractItemView& view);

/// The same for an edit that is too narrow for its text.
void ShowTipOfCutText(QLineEdit& edit);

} // namespace widgets
