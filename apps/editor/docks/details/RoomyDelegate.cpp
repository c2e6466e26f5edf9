#include "editor/docks/details/RoomyDelegate.h"

#include <QtGui/QFocusEvent>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>

#include <algorithm>
#include <utility>

namespace editor {

namespace {

/// More than anybody fills in ahead of the program.
constexpr std::size_t KeptEditors = 8;

} // namespace

// In the active window the view takes the focus back by itself, and not in another one.
RoomyDelegate::RoomyDelegate(QAbstractItemView& view) : LineDelegate(&view), m_view(view)
{
    connect(this, &QAbstractItemDelegate::closeEditor, this, [this](const QWidget* editor) {
        if (m_view.window()->focusWidget() == editor && !editor->hasFocus()) m_view.setFocus();
    });
    connect(qApp, &QApplication::focusChanged, this,
            [this](const QWidget*, const QWidget* focus) { FollowFocus(focus); });
}

/// `focus` is null while no window of the program has the keyboard. A list is part of the editor.
void RoomyDelegate::FollowFocus(const QWidget* focus)
{
    if (focus == nullptr || m_left == nullptr || focus->window()->windowType() == Qt::Popup) return;
    QWidget* const editor = std::exchange(m_left, nullptr);
    if (editor == focus || editor->isAncestorOf(focus) || !editor->isVisible()) return;
    emit commitData(editor);
    emit closeEditor(editor);
}

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

// The editor is not told either: a list of entries would take the one that what is typed so far happens to
// be.
bool RoomyDelegate::eventFilter(QObject* watched, QEvent* event)
{
    const bool isWindowLeft = event->type() == QEvent::FocusOut &&
                              static_cast<const QFocusEvent&>(*event).reason() == Qt::ActiveWindowFocusReason;
    if (isWindowLeft) m_left = qobject_cast<QWidget*>(watched);
    return isWindowLeft || LineDelegate::eventFilter(watched, event);
}

} // namespace editor
