#pragma once

#include "widgets/LineDelegate.h"

#include <QtCore/QPointer>

#include <deque>

class QAbstractItemView;

namespace editor {

/// What editors of cells need in the detail panel.
///
/// Gives the editor of a cell the width that it needs: in a narrow dock it is wider than its cell, over what
/// stands beside it, and never beyond the view.
///
/// Keeps the editors that have closed last, hidden: what was typed while the list of one was open is
/// addressed to that list, and reaches the program only as long as the list is there (`TypedAhead`).
///
/// Leaves an editor open while no window of the program has the keyboard, instead of taking half of what is
/// being typed: when a list is shut, some window systems take the keyboard from the window for a moment. What
/// was typed is taken when the user goes on elsewhere in the program, or by whoever asks for it
/// (`DetailPanel::Commit`). An editor that closes meanwhile leaves the focus to the view, which itself would
/// do so only in the window that has the keyboard.
class RoomyDelegate : public widgets::LineDelegate
{
public:
    /// The view owns this.
    explicit RoomyDelegate(QAbstractItemView& view);

    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;
    void destroyEditor(QWidget* editor, const QModelIndex& index) const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void FollowFocus(const QWidget* focus);

    QAbstractItemView& m_view;
    QPointer<QWidget> m_left;                       ///< the open editor whose window has lost the keyboard
    mutable std::deque<QPointer<QWidget>> m_closed; ///< the view owns them
};

} // namespace editor
