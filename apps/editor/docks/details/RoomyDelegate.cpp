#include "editor/docks/details/RoomyDelegate.h"

#include <QtCore/QTimer>
#include <QtWidgets/QAbstractItemView>

#include <algorithm>

namespace editor {

namespace {

/// How long the keys can be on the way that were typed while a list was open, in milliseconds: as long as a
/// busy program leaves its user waiting.
constexpr int TypedAhead = 10'000;

} // namespace

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

// A list that is open gets all keys of the desktop. Those that were typed ahead while the program was busy
// are on the way to its window and from there to the focus, and would be lost with the window.
void RoomyDelegate::destroyEditor(QWidget* editor, const QModelIndex&) const
{
    QTimer::singleShot(TypedAhead, editor, &QObject::deleteLater);
}

} // namespace editor
