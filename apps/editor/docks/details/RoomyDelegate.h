#pragma once

#include "widgets/LineDelegate.h"

#include <QtCore/QPointer>

#include <deque>

class QAbstractItemView;

namespace editor {

/// Gives the editor of a cell the width that it needs: in a narrow dock it is wider than its cell, over what
/// stands beside it, and never beyond the view.
///
/// Keeps the editors that have closed last, hidden: what was typed while the list of one was open is
/// addressed to that list, and reaches the program only as long as the list is there (`TypedAhead`).
class RoomyDelegate : public widgets::LineDelegate
{
public:
    /// The view owns this.
    explicit RoomyDelegate(QAbstractItemView& view);

    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;
    void destroyEditor(QWidget* editor, const QModelIndex& index) const override;

private:
    QAbstractItemView& m_view;
    mutable std::deque<QPointer<QWidget>> m_closed; ///< the view owns them
};

} // namespace editor
