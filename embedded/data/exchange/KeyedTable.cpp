#include "embedded/data/exchange/KeyedTable.h"

#include <algorithm>
#include <utility>

namespace embedded {

using namespace Qt::StringLiterals;

KeyedTable::KeyedTable(CString name, CStringArray columns, int keys)
    : m_name(std::move(name)), m_columns(std::move(columns)), m_keys(keys)
{
}

void KeyedTable::Load(Database& database)
{
    const CString sql = u"SELECT %1 FROM %2 ORDER BY rowid"_s.arg(m_columns.join(u','), m_name);
    database.ForEach(sql, {}, [&](const QSqlQuery& query) {
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
    constexpr qsizetype chunk = 500;
    database.Execute(u"DELETE FROM %1"_s.arg(m_name));
    for (qsizetype first = 0; first < m_rows.size(); first += chunk) {
        const QList<CStringArray> rows = m_rows.mid(first, chunk);
        database.Insert(m_name, m_columns, rows);
        for (qsizetype row = 0; row < rows.size(); ++row)
            meter.Step();
    }
}

void KeyedTable::Clear()
{
    m_isTouched = true;
    m_rows.clear();
    m_index.clear();
}

qsizetype KeyedTable::RemoveIf(const std::function<bool(const CStringArray& row)>& condition)
{
    const qsizetype removed = m_rows.removeIf(condition);
    if (removed > 0) {
        m_isTouched = true;
        Reindex();
    }
    return removed;
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
