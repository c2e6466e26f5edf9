#pragma once

#include "embedded/data/exchange/TableExchange.h"

#include <QtCore/QSet>

namespace embedded {

/// Attributes of small categories, one a row, each with where the values of its code come from.
class AttributeExchange final : public TableExchange
{
public:
    AttributeExchange();
    CArray<ImportColumn> Columns() const override;
    void Load(Database& database) override;
    QList<CStringArray> Rows() const override;
    void Begin(bool replace) override;
    void Take(const ImportRow& row, ImportReport& report) override;
    void Finish(ImportReport& report) override;
    QList<const KeyedTable*> Tables() const override;

private:
    KeyedTable::Change TakeSource(const ImportRow& row, const CString& code, const CString& list);
    KeyedTable::Change TakeListed(const ImportRow& row, const CString& code, const CString& list,
                                  const CString& values);
    CString ValuesOf(const CString& code, const CString& kind, const CString& list) const;

    KeyedTable m_attributes;
    KeyedTable m_cells;
    KeyedTable m_lists;
    QSet<CString> m_categories;
    QSet<CString> m_listedCodes; ///< that have a list
    QHash<CString, int> m_lines; ///< of the attributes that the file holds, by category and code
    SeenKeys m_seen;
    SeenKeys m_agreed;
    bool m_replace = false;
};

} // namespace embedded
