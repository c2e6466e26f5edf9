#pragma once

#include "editor/docks/details/RoomyDelegate.h"
#include "platform/Text.h"

#include <QtCore/QPointer>

class QComboBox;

namespace editor {

class ConditionTable;

/// The editors of the cells of conditions: lists of attributes, operators and values that can be searched by
/// typing, and a plain field for the upper bound.
class ConditionDelegate : public RoomyDelegate
{
public:
    /// The table owns this.
    explicit ConditionDelegate(ConditionTable& table);

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QComboBox* MakeForms(QWidget* parent, int row) const;
    QComboBox* MakeList(QWidget* parent, const CStringArray& entries) const;

    ConditionTable& m_table;
    mutable QPointer<QWidget> m_done; ///< an editor that closes as soon as the window comes to it
};

} // namespace editor
