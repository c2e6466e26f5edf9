#include "embedded/windows/TipDelegate.h"

#include <QtGui/QHelpEvent>
#include <QtWidgets/QAbstractItemView>
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

} // namespace embedded
