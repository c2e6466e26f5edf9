#pragma once

#include "editor/docks/takeoff/TakeoffFigures.h"
#include "shared/BillListing.h"

#include <QtCore/QAbstractItemModel>

namespace editor {

/// A bill of quantities: bill rows in the order of a bill, with their quota rows below.
class BillModel : public QAbstractItemModel
{
public:
    enum Column {
        SerialColumn,
        NumberColumn,
        NameColumn,
        UnitColumn,
        QuantityColumn,
        FeaturesColumn,
        NoteColumn,
        ColumnCount
    };

    using QAbstractItemModel::QAbstractItemModel;

    /// Shows the bill of these figures; null for none.
    void Show(TakeoffFiguresPtr figures);
    /// The line of an index that there is.
    const shared::BillLine& LineAt(const QModelIndex& index) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    static CString TextOf(const shared::BillLine& line, int column);

    TakeoffFiguresPtr m_figures;
    std::vector<shared::BillLine> m_lines; ///< bill rows, each followed by its quota rows
    std::vector<std::size_t> m_tops;       ///< of the bill rows, and the end
};

} // namespace editor
