#pragma once

#include <QtWidgets/QStyledItemDelegate>

namespace widgets {

/// Draws the items of a list as usual. Each is high enough for Chinese, even an empty one: rows are of one
/// height whatever they hold, and in a list of uniform rows the first one does not cut the others.
class LineDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

} // namespace widgets
