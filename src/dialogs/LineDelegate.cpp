#include "dialogs/LineDelegate.h"

#include <QtWidgets/QApplication>
#include <QtWidgets/QStyle>

using namespace Qt::StringLiterals;

namespace dialogs {

// Where the font that was asked for has no Chinese, the letters that stand in for its own are taller.
QSize LineDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QStyleOptionViewItem chinese = option;
    initStyleOption(&chinese, index);
    chinese.features |= QStyleOptionViewItem::HasDisplay;
    chinese.text = u"国"_s;
    const QStyle* style = option.widget != nullptr ? option.widget->style() : QApplication::style();
    const QSize line = style->sizeFromContents(QStyle::CT_ItemViewItem, &chinese, {}, option.widget);
    return QStyledItemDelegate::sizeHint(option, index).expandedTo({0, line.height()});
}

} // namespace dialogs
