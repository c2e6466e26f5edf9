#pragma once

#include "embedded/windows/SearchIndex.h"
#include "host/Records.h"

#include <QtCore/QAbstractTableModel>

#include <vector>

namespace embedded {

/// A bill or quota item as a picker lists it.
struct PickerItem
{
    CString number;
    CString name;
    CString unit;
    CString calRule; ///< the calculation rule; may be empty
    int unitCode = 0;
    int withAnnex = 0; ///< not 0: the quantity includes pipe fittings
    int chapter = -1;  ///< position of the chapter in which the item stands
};

/// The items of a library as a table, of which a search shows some. Made for tens of thousands of items: a
/// view asks only for the rows that it shows, and a search goes over texts prepared by `SetItems`.
class ItemModel : public QAbstractTableModel
{
public:
    enum Column { Number, Name, Unit, Rule, Annex, ColumnCount };

    using QAbstractTableModel::QAbstractTableModel;

    /// Replaces the items and shows them all.
    void SetItems(std::vector<PickerItem> items);
    const std::vector<PickerItem>& Items() const noexcept { return m_items; }

    /// Shows the items in `scope` (positions in `Items()`) that hold each word of `query`; see `SearchIndex`.
    /// Selections of views are lost by it.
    void Show(const SearchIndex::Scope& scope, const CString& query);

    /// The position in `Items()` of a row, and the row of a position; -1 when it is not shown.
    int ItemAt(int row) const;
    int RowOf(int item) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::vector<PickerItem> m_items;
    SearchIndex m_index;
    std::vector<int> m_shown;
};

} // namespace embedded
