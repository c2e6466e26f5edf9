#pragma once

#include "embedded/data/exchange/TableExchange.h"

#include <QtCore/QSet>

namespace embedded {

/// Which quota items go with a bill item, one pair a row.
class GuideExchange final : public TableExchange
{
public:
    GuideExchange();
    CArray<ImportColumn> Columns() const override;
    void Load(Database& database) override;
    QList<CStringArray> Rows() const override;
    void Begin(bool replace) override;
    void Take(const ImportRow& row, ImportReport& report) override;
    void Finish(ImportReport& report) override;
    QList<const KeyedTable*> Tables() const override;

private:
    KeyedTable m_bills;
    KeyedTable m_quotas;
    QHash<CString, CStringArray> m_billsOfQuota;
    QSet<CString> m_loaded; ///< pairs
    QSet<CString> m_pairs;
    SeenKeys m_seen;
};

} // namespace embedded
