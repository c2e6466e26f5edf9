#pragma once

#include "embedded/data/exchange/LibraryScope.h"
#include "embedded/data/exchange/TableExchange.h"

#include <QtCore/QSet>

namespace embedded {

/// Which items of a quota library go with an item of the bill library that its guide speaks of, one pair a
/// row.
class GuideExchange final : public TableExchange
{
public:
    explicit GuideExchange(LibraryScope scope);
    CArray<ImportColumn> Columns() const override;
    void Load(Database& database) override;
    QList<CStringArray> Rows() const override;
    void Begin(bool replace) override;
    void Take(const ImportRow& row, ImportReport& report) override;
    void Finish(ImportReport& report) override;
    QList<const KeyedTable*> Tables() const override;

private:
    LibraryScope m_scope;
    KeyedTable m_bills;
    KeyedTable m_quotas;
    QHash<CString, CStringArray> m_billsOfQuota;
    QSet<CString> m_loaded; ///< pairs
    QSet<CString> m_pairs;
    SeenKeys m_seen;
};

} // namespace embedded
