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
    CStringArray NumberRule(const ImportRow& row, const CString& role, const CStringArray& loaded) const;
    void CheckRoles(ImportReport& report) const;
    void CheckCodes(ImportReport& report) const;
    void CheckReferences(ImportReport& report) const;
    void CheckSharedItems(ImportReport& report) const;
    void CheckNumbers(ImportReport& report) const;
    void CheckItemsStay(ImportReport& report) const;
    const Library* SuccessorOf(const Library& former, const CArray<Library>& libraries) const;
    /// The numbers of the items that a library offers.
    CStringArray Numbers(const Library& library) const;
    void DropItems(ImportReport& report);
    void NoteNewLibraries(ImportReport& report) const;
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
