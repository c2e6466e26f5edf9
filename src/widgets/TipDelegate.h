#pragma once

#include "widgets/LineDelegate.h"

namespace widgets {

/// Draws items as usual and shows the whole text of an item that is too narrow for it in a tool tip.
class TipDelegate : public LineDelegate
{
public:
    using LineDelegate::LineDelegate;

    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;
};

} // namespace widgets
