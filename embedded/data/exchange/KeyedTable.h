#pragma once

#include "embedded/data/engine/Database.h"
#include "embedded/data/exchange/ImportMeter.h"

#include <QtCore/QHash>

namespace embedded {

/// One table of the catalogue in memory: its rows in their order, found by their key, and what it held when
/// it was loaded. All values are texts.
class KeyedTable
{
public:
    enum class Change { None, Added, Changed };

    /// `columns` begins with the `keys` columns that make up the key.
    KeyedTable(CString name, CStringArray columns, int keys);

    /// Reads the rows of the table, or those of one item set.
    void Load(Database& database, const CString& items = {});
    /// Writes the rows over those that were loaded, if they have changed. To be called in a transaction.
    void Store(Database& database, ImportMeter& meter) const;
    /// The rows that `Store` writes.
    qsizetype RowsToStore() const { return m_isTouched ? m_rows.size() : 0; }

    /// Takes all rows out.
    void Clear();

    const CString& Name() const noexcept { return m_name; }
    const QList<CStringArray>& Rows() const noexcept { return m_rows; }
    /// The rows as they were loaded, by key and in no particular order.
    const QHash<CString, CStringArray>& Loaded() const noexcept { return m_loaded; }
    bool Has(const CStringArray& key) const { return m_index.contains(Joined(key)); }
    /// The row of a key, now and as it was loaded; empty when there is none.
    CStringArray Find(const CStringArray& key) const;
    CStringArray FindLoaded(const CStringArray& key) const { return m_loaded.value(Joined(key)); }
    /// A value of the row as it was loaded; empty when there was none.
    CString LoadedValue(const CStringArray& key, int column) const { return FindLoaded(key).value(column); }

    /// Puts a row in the place of that with its key, or behind the others, and says how that differs from
    /// what was loaded.
    Change Put(const CStringArray& row);
    /// How many loaded rows have no successor of their key.
    int CountVanished() const;

private:
    static CString Joined(const CStringArray& key) { return key.join(QChar(u'\x1F')); }
    CString KeyOf(const CStringArray& row) const { return Joined(row.first(m_keys)); }
    void Reindex();

    CString m_name;
    CStringArray m_columns;
    int m_keys;
    CString m_items;
    bool m_isTouched = false;
    QList<CStringArray> m_rows;
    QHash<CString, qsizetype> m_index;
    QHash<CString, CStringArray> m_loaded;
};

} // namespace embedded
