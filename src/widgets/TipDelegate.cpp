#include "widgets/TipDelegate.h"

#include "widgets/CutTextTips.h"

#include <QtGui/QHelpEvent>
#include <QtWidgets/QAbstractItemView>

namespace widgets {

bool TipDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                            const QModelIndex& index)
{
    if (event == nullptr || event->type() != QEvent::ToolTip)
        return LineDelegate::helpEvent(event, view, option, index);
    ShowTipIfCut(*view, index, option.rect, sizeHint(option, index).width(), event->globalPos());
    return true;
}

} // namespace widgets
