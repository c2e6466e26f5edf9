#pragma once

#include "embedded/data/exchange/TableExchange.h"

namespace embedded {

/// Ids of one level of categories. An id stays with its category and is never given out again, since rule
/// files hold it: the highest id ever given out is remembered in the catalogue.
class CategoryIds
{
public:
    void Load(const KeyedTable& level, qsizetype idColumn, int highest);
    /// Forgets which ids are in use, for the categories are about to be replaced.
    void Clear() { m_owners.clear(); }
    /// Notes that `owner` has an id; raises `RowRefused` when another one has it.
    void Claim(const CString& id, const CString& owner);
    /// An id that nobody ever had.
    CString Next() { return CString::number(++m_highest); }
    int Highest() const noexcept { return m_highest; }

private:
    QHash<CString, CString> m_owners;
    int m_highest = 0;
};

/// Specialties, big and small categories: one row a small category, which makes the levels above it when they
/// are missing.
class CatalogExchange final : public TableExchange
{
public:
    CatalogExchange();
    CArray<ImportColumn> Columns() const override;
    void Prepare(Database& database) override;
    void Load(Database& database) override;
    QList<CStringArray> Rows() const override;
    void Begin(bool replace) override;
    void Take(const ImportRow& row, ImportReport& report) override;
    void Finish(ImportReport& report) override;
    QList<const KeyedTable*> Tables() const override;

private:
    /// A level of the catalogue: its table, whose id stands behind the key, and its ids.
    struct Level
    {
        qsizetype idColumn;
        KeyedTable table;
        CategoryIds ids;
        KeyedTable::Change Put(const ImportRow& row, const CString& idName, const CStringArray& key,
                               const CStringArray& rest);
        void GiveIds();
    };

    void CheckBigCategories(ImportReport& report) const;
    void FollowRemoved(ImportReport& report);
    qsizetype FollowIn(KeyedTable& table, const QHash<CString, CString>& renamed);

    Level m_specialties;
    Level m_bigs;
    Level m_smalls;
    KeyedTable m_given;
    KeyedTable m_attributes;
    KeyedTable m_calculation;
    SeenKeys m_seen;
    QHash<CString, int> m_lineOfBig;
    bool m_replace = false;
};

} // namespace embedded
