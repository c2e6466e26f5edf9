#pragma once

#include "widgets/LineDelegate.h"

class QAbstractItemView;

namespace editor {

/// Gives the editor of a cell the width that it needs: in a narrow dock it is wider than its cell, over what
/// stands beside it, and never beyond the view.
class RoomyDelegate : public widgets::LineDelegate
{
public:
    /// The view owns this.
    explicit RoomyDelegate(QAbstractItemView& view);

    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;

private:
    QAbstractItemView& m_view;
};

} // namespace editor
