#include "embedded/windows/TipDelegate.h"

#include <QtGui/QHelpEvent>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>
#include <QtWidgets/QStyle>
#include <QtWidgets/QToolTip>

using namespace Qt::StringLiterals;

namespace embedded {

bool TipDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                            const QModelIndex& index)
{
    if (event == nullptr || event->type() != QEvent::ToolTip)
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    const QRect seen = option.rect & view->viewport()->rect();
    if (!index.isValid() || sizeHint(option, index).width() <= seen.width()) {
        QToolTip::hideText();
        return true;
    }
    // As markup, which is broken into lines when it is wide; the text itself is none.
    const QString text = index.data().toString().toHtmlEscaped();
    QToolTip::showText(event->globalPos(), u"<span>"_s + text + u"</span>"_s, view->viewport(), option.rect);
    return true;
}

// Where the font that was asked for has no Chinese, the letters that stand in for its own are taller.
QSize TipDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QStyleOptionViewItem chinese = option;
    initStyleOption(&chinese, index);
    chinese.features |= QStyleOptionViewItem::HasDisplay;
    chinese.text = u"国"_s;
    const QStyle* style = option.widget != nullptr ? option.widget->style() : QApplication::style();
    const QSize line = style->sizeFromContents(QStyle::CT_ItemViewItem, &chinese, {}, option.widget);
    return QStyledItemDelegate::sizeHint(option, index).expandedTo({0, line.height()});
}

} // namespace embedded
