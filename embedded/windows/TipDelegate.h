#pragma once

#include <QtWidgets/QStyledItemDelegate>

namespace embedded {

/// Draws items as usual and shows the whole text of an item that is too narrow for it in a tool tip.
class TipDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;
};

} // namespace embedded
