#include "editor/docks/details/RoomyDelegate.h"

#include <QtWidgets/QAbstractItemView>

#include <algorithm>

namespace editor {

RoomyDelegate::RoomyDelegate(QAbstractItemView& view) : LineDelegate(&view), m_view(view) {}

void RoomyDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                         const QModelIndex&) const
{
    QRect place = option.rect;
    const QRect whole = m_view.viewport()->rect();
    place.setWidth(std::min(std::max(place.width(), editor->minimumSizeHint().width()), whole.width()));
    if (place.right() > whole.right()) place.moveRight(whole.right());
    editor->setGeometry(place);
}

} // namespace editor
