#pragma once

#include "rules/match/Trace.h"

#include <QtCore/QAbstractTableModel>

#include <vector>

namespace editor {

/// The rules that were tried in vain, the nearest first, each with the first condition that does not hold.
class MissesModel : public QAbstractTableModel
{
public:
    enum Column { RuleColumn, HoldingColumn, ReasonColumn, ColumnCount };

    using QAbstractTableModel::QAbstractTableModel;

    /// Lists those of a trace; none for a null category.
    void List(rules::SmallCategoryPtr category, rules::Trace trace);
    /// The index of a row's rule in its category.
    std::size_t RuleAt(int row) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    CString TextOf(const rules::RuleTrace& miss, int column) const;

    rules::SmallCategoryPtr m_category;
    rules::Trace m_trace;
    std::vector<const rules::RuleTrace*> m_misses; ///< in it
};

} // namespace editor
