#include "dialogs/grid/GridModel.h"

#include "dialogs/grid/GridText.h"
#include "widgets/ReadableColour.h"

#include <QtGui/QColor>

#include <algorithm>

namespace {

QColor ToColour(std::uint32_t bgr)
{
    return QColor(static_cast<int>(bgr & 0xFFU), static_cast<int>((bgr >> 8U) & 0xFFU),
                  static_cast<int>((bgr >> 16U) & 0xFFU));
}

int ToAlignment(unsigned format)
{
    int alignment = Qt::AlignVCenter | ((format & GridFormatCenter) != 0 ? Qt::AlignHCenter : Qt::AlignLeft);
    if ((format & GridFormatWordBreak) != 0) alignment |= Qt::TextWordWrap;
    return alignment;
}

} // namespace

void GridModel::SetRows(int count)
{
    beginResetModel();
    m_rows.resize(static_cast<std::size_t>(std::max(count, 0)),
                  std::vector<Cell>(static_cast<std::size_t>(m_columns)));
    endResetModel();
}

void GridModel::SetColumns(int count)
{
    beginResetModel();
    m_columns = std::max(count, 0);
    for (auto& row : m_rows)
        row.resize(static_cast<std::size_t>(m_columns));
    endResetModel();
}

void GridModel::SetFixedRows(int count)
{
    beginResetModel();
    m_fixedRows = std::clamp(count, 0, 1);
    endResetModel();
}

void GridModel::SetFixedColumns(int count)
{
    beginResetModel();
    m_fixedColumns = std::clamp(count, 0, 1);
    endResetModel();
}

int GridModel::InsertRow(int row)
{
    row = std::max(std::min(row, Rows()), std::min(m_fixedRows, Rows()));
    const bool shown = row >= m_fixedRows;
    if (shown) beginInsertRows({}, row - m_fixedRows, row - m_fixedRows);
    m_rows.emplace(m_rows.begin() + row, static_cast<std::size_t>(m_columns));
    if (shown) endInsertRows();
    return row;
}

void GridModel::RemoveDataRows()
{
    if (Rows() <= m_fixedRows) return;
    beginRemoveRows({}, 0, rowCount() - 1);
    m_rows.resize(static_cast<std::size_t>(m_fixedRows));
    endRemoveRows();
}

bool GridModel::Contains(int row, int col) const
{
    return row >= 0 && row < Rows() && col >= 0 && col < m_columns;
}

const GridModel::Cell* GridModel::Find(int row, int col) const
{
    if (!Contains(row, col)) return nullptr;
    return &m_rows[static_cast<std::size_t>(row)][static_cast<std::size_t>(col)];
}

CellType GridModel::TypeOf(int col) const
{
    const auto position = static_cast<std::size_t>(col);
    return col >= 0 && position < m_types.size() ? m_types[position] : m_defaultType;
}

bool GridModel::IsEditable(int row, int col) const
{
    const Cell* cell = Find(row, col);
    return cell != nullptr && !IsFixed(row, col) && (cell->state & ReadOnlyState) == 0 &&
           TypeOf(col) != CellType::Click;
}

void GridModel::SetTextBackColour(std::uint32_t colour)
{
    m_textBackColour = colour;
    if (rowCount() > 0 && columnCount() > 0) {
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
    }
}

QModelIndex GridModel::IndexOf(int row, int col) const
{
    if (!Contains(row, col) || IsFixed(row, col)) return {};
    return index(row - m_fixedRows, col - m_fixedColumns);
}

GridCellId GridModel::CellOf(const QModelIndex& index) const
{
    if (!index.isValid()) return {};
    return {index.row() + m_fixedRows, index.column() + m_fixedColumns};
}

int GridModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : std::max(Rows() - m_fixedRows, 0);
}

int GridModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : std::max(m_columns - m_fixedColumns, 0);
}

QVariant GridModel::data(const QModelIndex& index, int role) const
{
    const GridCellId id = CellOf(index);
    const Cell* cell = Find(id.row, id.col);
    if (cell == nullptr) return {};
    const std::uint32_t back = BackColourOf(*cell);
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return cell->text;
    case Qt::TextAlignmentRole:
        return ToAlignment(cell->format);
    case Qt::BackgroundRole:
        return back == NoColour ? QVariant() : QVariant(ToColour(back));
    case Qt::ForegroundRole:
        return back == NoColour ? QVariant() : QVariant(widgets::BlackOrWhiteOn(ToColour(back)));
    default:
        return {};
    }
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    const bool top = orientation == Qt::Horizontal;
    const Cell* cell = top ? Find(0, section + m_fixedColumns) : Find(section + m_fixedRows, 0);
    if (cell == nullptr) return {};
    if (role == Qt::DisplayRole) return cell->text;
    if (role == Qt::TextAlignmentRole) return ToAlignment(cell->format);
    return {};
}

Qt::ItemFlags GridModel::flags(const QModelIndex& index) const
{
    const GridCellId id = CellOf(index);
    if (!Contains(id.row, id.col)) return Qt::NoItemFlags;
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    if (IsEditable(id.row, id.col)) flags |= Qt::ItemIsEditable;
    return flags;
}

bool GridModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    const GridCellId id = CellOf(index);
    if (role != Qt::EditRole || !IsEditable(id.row, id.col)) return false;
    return Write(id.row, id.col,
                 [&value](Cell& cell) { cell.text = grid::WithoutForbidden(value.toString()); });
}

void GridModel::Announce(int row, int col)
{
    if (row < m_fixedRows) {
        if (col >= m_fixedColumns) {
            emit headerDataChanged(Qt::Horizontal, col - m_fixedColumns, col - m_fixedColumns);
        }
    } else if (col < m_fixedColumns) {
        emit headerDataChanged(Qt::Vertical, row - m_fixedRows, row - m_fixedRows);
    } else {
        const QModelIndex changed = IndexOf(row, col);
        emit dataChanged(changed, changed);
    }
}

std::uint32_t GridModel::BackColourOf(const Cell& cell) const
{
    return cell.backColour == NoColour ? m_textBackColour : cell.backColour;
}
