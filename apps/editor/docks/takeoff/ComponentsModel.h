#pragma once

#include "editor/docks/takeoff/TakeoffFigures.h"

#include <QtCore/QAbstractTableModel>

namespace editor {

/// Components of a take-off table, a line each, as their table has them; nothing is made for a line before it
/// is seen. In front what the rules look at.
class ComponentsModel : public QAbstractTableModel
{
public:
    enum Column { IdColumn, NameColumn, RuleColumn, OwnColumns };

    using QAbstractTableModel::QAbstractTableModel;

    /// Lists these rows of the table. The attributes that the rules of `category` test come first among its
    /// columns; null for no category.
    void List(TakeoffFiguresPtr figures, std::vector<std::uint32_t> rows,
              const rules::SmallCategoryPtr& category);
    void Clear() { List(nullptr, {}, nullptr); }

    /// The row of the table that a line shows.
    std::uint32_t RowAt(int line) const { return m_rows[static_cast<std::size_t>(line)]; }
    /// The component in it, as the table has it.
    Component ComponentAt(int line) const { return m_figures->table->ComponentAt(RowAt(line)); }
    /// What became of it.
    const TakeoffFigures::Priced& PricedAt(int line) const { return m_figures->components[RowAt(line)]; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    void OrderColumns(const rules::SmallCategoryPtr& category);
    CString TextAt(int line, int column) const;

    TakeoffFiguresPtr m_figures;
    std::vector<std::uint32_t> m_rows;
    std::vector<std::size_t> m_columns; ///< of the table, as they are shown behind the own ones
};

} // namespace editor
