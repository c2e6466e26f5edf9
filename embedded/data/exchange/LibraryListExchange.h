#pragma once

#include "embedded/data/Library.h"
#include "embedded/data/exchange/TableExchange.h"

#include <vector>

namespace embedded {

/// The libraries themselves, one a row. Item sets that no library offers any more go with the last that did.
class LibraryListExchange final : public TableExchange
{
public:
    LibraryListExchange();
    CArray<ImportColumn> Columns() const override;
    void Prepare(Database& database) override;
    void Load(Database& database) override;
    QList<CStringArray> Rows() const override;
    void Begin(bool replace) override;
    void Take(const ImportRow& row, ImportReport& report) override;
    void Finish(ImportReport& report) override;
    QList<const KeyedTable*> Tables() const override;

private:
    CArray<Library> Libraries() const;
    void CheckRoles(ImportReport& report) const;
    void CheckCodes(ImportReport& report) const;
    void CheckReferences(ImportReport& report) const;
    void CheckSharedItems(ImportReport& report) const;
    void DropItems(ImportReport& report);
    void FollowBillLibraries(ImportReport& report);
    void Refuse(const Library& library, const CString& reason, ImportReport& report) const;

    Database* m_database = nullptr; ///< of an import
    KeyedTable m_libraries;
    CArray<Library> m_loaded;
    std::vector<KeyedTable> m_others; ///< tables of items that change with the libraries
    SeenKeys m_seen;
    QHash<CString, int> m_lineOf; ///< by code
};

} // namespace embedded
