#pragma once

#include "embedded/data/exchange/TableExchange.h"

#include <QtCore/QSet>

namespace embedded {

/// Calculation items with their rules, one a row for every small category that an item serves, or one without
/// a category.
class CalculationExchange final : public TableExchange
{
public:
    CalculationExchange();
    CArray<ImportColumn> Columns() const override;
    void Load(Database& database) override;
    QList<CStringArray> Rows() const override;
    void Begin(bool replace) override;
    void Take(const ImportRow& row, ImportReport& report) override;
    void Finish(ImportReport& report) override;
    QList<const KeyedTable*> Tables() const override;

private:
    KeyedTable::Change TakeRule(const ImportRow& row, const CString& item);
    KeyedTable::Change TakePlace(const ImportRow& row, const CString& item, const CString& category);

    KeyedTable m_rules;
    KeyedTable m_places;
    QSet<CString> m_categories;
    QHash<CString, CString> m_itemOfCode;
    SeenKeys m_seen;
    SeenKeys m_agreed;
    bool m_replace = false;
};

} // namespace embedded
