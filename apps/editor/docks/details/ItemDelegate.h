#pragma once

#include "editor/docks/details/RoomyDelegate.h"

namespace editor {

class ItemTree;

/// The editors of the cells of items: the name in a field, the unit in a list to which others can be typed,
/// 带管道配件 in a list.
class ItemDelegate : public RoomyDelegate
{
public:
    /// The tree owns this.
    explicit ItemDelegate(ItemTree& tree);

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;

private:
    ItemTree& m_tree;
};

} // namespace editor
