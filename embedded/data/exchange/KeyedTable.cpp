#include "embedded/data/exchange/KeyedTable.h"

#include <algorithm>
#include <utility>

namespace embedded {

using namespace Qt::StringLiterals;

KeyedTable::KeyedTable(CString name, CStringArray columns, int keys)
    : m_name(std::move(name)), m_columns(std::move(columns)), m_keys(keys)
{
}

void KeyedTable::Load(Database& database, const CString& items)
{
    m_items = items;
    const CString where = items.isEmpty() ? CString() : u"WHERE items = ? "_s;
    const QVariantList values = items.isEmpty() ? QVariantList() : QVariantList{items};
    const CString sql = u"SELECT %1 FROM %2 %3ORDER BY %4"_s.arg(m_columns.join(u','), m_name, where,
                                                                 database.InsertionOrder());
    database.ForEach(sql, values, [&](const QSqlQuery& query) {
        CStringArray row;
        for (int column = 0; column < m_columns.size(); ++column)
            row.append(query.value(column).toString());
        m_rows.append(row);
    });
    Reindex();
    for (const CStringArray& row : std::as_const(m_rows))
        m_loaded.insert(KeyOf(row), row);
}

void KeyedTable::Store(Database& database, ImportMeter& meter) const
{
    if (!m_isTouched) return;
    database.ReplaceRows({m_name, m_columns, m_keys, m_items.isEmpty() ? CString() : u"items"_s, m_items},
                         m_rows, [&] { meter.Step(); });
}

void KeyedTable::Clear()
{
    m_isTouched = true;
    m_rows.clear();
    m_index.clear();
}

CStringArray KeyedTable::Find(const CStringArray& key) const
{
    return m_rows.value(m_index.value(Joined(key), -1));
}

KeyedTable::Change KeyedTable::Put(const CStringArray& row)
{
    const CString key = KeyOf(row);
    const qsizetype place = m_index.value(key, -1);
    if (place < 0) {
        m_index.insert(key, m_rows.size());
        m_rows.append(row);
        m_isTouched = true;
    } else if (m_rows[place] != row) {
        m_rows[place] = row;
        m_isTouched = true;
    }
    const auto loaded = m_loaded.constFind(key);
    if (loaded == m_loaded.constEnd()) return Change::Added;
    return *loaded == row ? Change::None : Change::Changed;
}

int KeyedTable::CountVanished() const
{
    return static_cast<int>(std::count_if(m_loaded.keyBegin(), m_loaded.keyEnd(),
                                          [&](const CString& key) { return !m_index.contains(key); }));
}

void KeyedTable::Reindex()
{
    m_index.clear();
    for (qsizetype row = 0; row < m_rows.size(); ++row)
        m_index.insert(KeyOf(m_rows[row]), row);
}

} // namespace embedded
