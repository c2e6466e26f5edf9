#pragma once

#include <QtWidgets/QTreeWidget>

#include <functional>

namespace widgets {

/// A tree with one selected item that tells of a change of selection before it happens. What the toolkit
/// offers by itself, `itemSelectionChanged`, comes when it has happened; both come inside the call that
/// selects.
class TreeControl : public QTreeWidget
{
public:
    explicit TreeControl(QWidget* parent);

    /// Runs `handler` before another item becomes selected or the selection is lost, while the old one still
    /// stands. A command that selects what is selected already is no change.
    void OnSelectionChanging(std::function<void()> handler);

    /// The selected item; null when there is none.
    QTreeWidgetItem* GetSelectedItem() const;

protected:
    /// The user can select another item, but not none: neither Ctrl with a click or a key nor a click where
    /// no item is deselects.
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override;
    /// With dotted lines from each item to its parent, its neighbours and the root's line.
    void drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const override;
    /// Dragging with the left button leaves the selection where the press put it.
    void mouseMoveEvent(QMouseEvent* event) override;
};

/// A list of several columns: one header, one selected row over its full width, lines between the cells.
QTreeWidget* MakeReportList(QWidget* parent);

/// The selected item; null when there is none.
QTreeWidgetItem* SelectedItemOf(const QTreeWidget& tree);

/// The integer kept with an item; 0 for no item, and at first.
int DataOf(const QTreeWidgetItem* item);
void SetData(QTreeWidgetItem& item, int value);

} // namespace widgets
