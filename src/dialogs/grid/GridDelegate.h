#pragma once

#include "dialogs/grid/GridTypes.h"

#include <QtWidgets/QStyledItemDelegate>

/// What a grid's delegate asks and tells its grid.
class IGridCells
{
public:
    virtual ~IGridCells() = default;
    /// Whether the cell opens a choice list.
    virtual bool HasChoices(const QModelIndex& index) const = 0;
    /// The entries of the cell's choice list.
    virtual CStringArray ChoicesOf(const QModelIndex& index) = 0;
    /// An editor for the cell was made; the view shows it next.
    virtual void EditorOpened(QWidget* editor, const QModelIndex& index) = 0;
    /// The user chose `text` in the cell's list.
    virtual void ChoiceMade(const QModelIndex& index, const CString& text) = 0;
};

/// Paints the cells of a grid and makes their editors: a line for texts, a list for choices. Owned by the
/// grid.
class GridDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    GridDelegate(IGridCells& cells, QObject* parent);

    /// The part of a choice cell that opens its list by one click.
    static QRect ArrowRect(const QRect& cell);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    /// Writes a line's text. A choice is announced, never written.
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
    /// The whole cell: the toolkit's own choice, the text's part, would move the text up while it is edited.
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

private:
    QWidget* MakeChoiceEditor(QWidget* parent, const QModelIndex& index) const;
    IGridCells& m_cells;
};
