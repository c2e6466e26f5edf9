#pragma once

#include "embedded/data/exchange/LibraryScope.h"
#include "embedded/data/exchange/TableExchange.h"

#include <vector>

namespace embedded {

/// How the tables of bill libraries and of quota libraries differ.
struct LibraryForm
{
    CString items;
    CString sections;
    CString sectionKey;  ///< the key column of the sections
    CString itemSection; ///< the column in which an item names its section
    QChar separator;     ///< between the levels of a section's key
    bool isBill = false;

    static LibraryForm Bill();
    static LibraryForm Quota();
};

/// The items of a library, one a row, each with its section and the titles on the way there.
class LibraryExchange final : public TableExchange
{
public:
    LibraryExchange(const LibraryForm& form, LibraryScope scope);
    CArray<ImportColumn> Columns() const override;
    void Load(Database& database) override;
    QList<CStringArray> Rows() const override;
    void Begin(bool replace) override;
    void Take(const ImportRow& row, ImportReport& report) override;
    void Finish(ImportReport& report) override;
    QList<const KeyedTable*> Tables() const override;

private:
    CString Number(const ImportRow& row) const;
    CString ParentOf(const CString& section) const;
    CString TitlesOf(const CString& section) const;
    KeyedTable::Change TakeSection(const ImportRow& row, const CString& section);
    KeyedTable::Change PutLoadedSection(const CString& section);
    qsizetype CountLostBills() const;

    LibraryForm m_form;
    LibraryScope m_scope;
    KeyedTable m_items;
    KeyedTable m_sections;
    std::vector<KeyedTable> m_quotas; ///< of a bill library: the item sets whose guides speak of its items
    SeenKeys m_seen;
    SeenKeys m_titles;
    bool m_replace = false;
};

} // namespace embedded
