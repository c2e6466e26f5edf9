#include "editor/docks/details/RoomyDelegate.h"

#include <QtWidgets/QAbstractItemView>

#include <algorithm>

namespace editor {

namespace {

/// More than anybody fills in ahead of the program.
constexpr std::size_t KeptEditors = 8;

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

void RoomyDelegate::destroyEditor(QWidget* editor, const QModelIndex& index) const
{
    m_closed.emplace_back(editor);
    if (m_closed.size() <= KeptEditors) return;
    if (QWidget* const oldest = m_closed.front()) LineDelegate::destroyEditor(oldest, index);
    m_closed.pop_front();
}

} // namespace editor
