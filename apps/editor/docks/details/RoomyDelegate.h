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
/// Leaves an editor open while another window has the keyboard, instead of taking half of what is being
/// typed: when a list is shut, some window systems take the keyboard from the window for a moment. Whoever
/// needs what has been typed so far asks for it (`DetailPanel::Commit`). An editor that closes then leaves
/// the focus to the view, which itself would do so only in the window that has the keyboard.
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
    QAbstractItemView& m_view;
    mutable std::deque<QPointer<QWidget>> m_closed; ///< the view owns them
};

} // namespace editor
