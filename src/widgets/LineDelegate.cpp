#include "widgets/LineDelegate.h"

#include "widgets/TextMetrics.h"

#include <QtWidgets/QApplication>
#include <QtWidgets/QStyle>

namespace widgets {

QSize LineDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QStyleOptionViewItem chinese = option;
    initStyleOption(&chinese, index);
    chinese.features |= QStyleOptionViewItem::HasDisplay;
    chinese.text = ChineseLine();
    const QStyle* style = option.widget != nullptr ? option.widget->style() : QApplication::style();
    const QSize line = style->sizeFromContents(QStyle::CT_ItemViewItem, &chinese, {}, option.widget);
    return QStyledItemDelegate::sizeHint(option, index).expandedTo({0, line.height()});
}

} // namespace widgets
