#pragma once

#include <QtWidgets/QStyledItemDelegate>

namespace embedded {

/// Draws items as usual and shows the whole text of an item that is too narrow for it in a tool tip. Every
/// item is high enough for Chinese, so that rows are of one height whatever they hold.
class TipDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

} // namespace embedded
