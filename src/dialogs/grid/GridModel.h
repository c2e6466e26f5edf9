#pragma once

#include "dialogs/grid/GridTypes.h"

#include <QtCore/QAbstractTableModel>

#include <cstdint>
#include <utility>
#include <vector>

/// The cells of a grid. Fixed cells are stored with the others and shown by the view's headers, so a row or
/// column of the grid is the model's plus the number of fixed ones. Owned by the grid.
class GridModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    struct Cell
    {
        CString text;
        std::intptr_t data = 0;
        std::uint32_t backColour = NoColour;
        unsigned state = 0;
        unsigned format = 0;
    };
    /// The background of a cell that has none of its own.
    static constexpr std::uint32_t NoColour = 0xFFFFFFFFU;

    using QAbstractTableModel::QAbstractTableModel;

    int Rows() const { return static_cast<int>(m_rows.size()); }
    int Columns() const { return m_columns; }
    int FixedRows() const { return m_fixedRows; }
    int FixedColumns() const { return m_fixedColumns; }
    /// Dimensions, fixed rows and columns included. What falls outside is dropped, what is new is empty.
    void SetRows(int count);
    void SetColumns(int count);
    /// 0 or 1: the view shows one header in each direction. Other values are brought into that range.
    void SetFixedRows(int count);
    void SetFixedColumns(int count);

    /// Adds an empty row in front of `row`, which is brought between the fixed rows and the row count; gives
    /// the new row.
    int InsertRow(int row);
    /// Removes the rows that are not fixed.
    void RemoveDataRows();

    bool Contains(int row, int col) const;
    bool IsFixed(int row, int col) const { return row < m_fixedRows || col < m_fixedColumns; }
    /// The cell, null outside the grid.
    const Cell* Find(int row, int col) const;
    /// Writes a cell and has it repainted. False outside the grid.
    template <typename Change>
    bool Write(int row, int col, Change change)
    {
        if (!Contains(row, col)) return false;
        change(m_rows[static_cast<std::size_t>(row)][static_cast<std::size_t>(col)]);
        Announce(row, col);
        return true;
    }

    void SetDefaultType(CellType type) { m_defaultType = type; }
    void SetTypes(std::vector<CellType> types) { m_types = std::move(types); }
    /// The column's type; the default one for a column beyond the list.
    CellType TypeOf(int col) const;
    /// Whether the cell opens an editor: it is not fixed, not read-only and not of a type that opens nothing.
    bool IsEditable(int row, int col) const;
    /// The background of cells that have none of their own, 0x00BBGGRR.
    void SetTextBackColour(std::uint32_t colour);

    /// From a cell of the grid to the model's index, invalid for fixed cells and outside; and back.
    QModelIndex IndexOf(int row, int col) const;
    GridCellId CellOf(const QModelIndex& index) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    /// Takes an edited text, without the characters that no rule file can hold.
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

private:
    void Announce(int row, int col);
    std::uint32_t BackColourOf(const Cell& cell) const;

    std::vector<std::vector<Cell>> m_rows;
    int m_columns = 0;
    int m_fixedRows = 0;
    int m_fixedColumns = 0;
    CellType m_defaultType = CellType::Text;
    std::vector<CellType> m_types;
    std::uint32_t m_textBackColour = NoColour;
};
