#pragma once

#include "embedded/data/TableImport.h"
#include "embedded/data/exchange/ImportRow.h"
#include "embedded/data/exchange/KeyedTable.h"
#include "embedded/data/exchange/LibraryScope.h"

#include <memory>

namespace embedded {

/// One kind of table between the catalogue and its CSV form. An import prepares, loads, begins, takes every
/// row, finishes and stores, all within one transaction; an export loads and asks for the rows.
class TableExchange
{
public:
    virtual ~TableExchange();

    virtual CArray<ImportColumn> Columns() const = 0;
    /// Makes what only imports need in the catalogue.
    virtual void Prepare(Database& database);
    virtual void Load(Database& database) = 0;
    /// The CSV form of what is loaded, one field per column.
    virtual QList<CStringArray> Rows() const = 0;

    /// Makes ready for rows; `replace` takes out what the file is to replace.
    virtual void Begin(bool replace) = 0;
    /// Takes a row in. Raises `RowRefused`; what it has changed by then is never stored.
    virtual void Take(const ImportRow& row, ImportReport& report) = 0;
    /// Checks and completes what only the whole file shows. Adds refused rows to the report.
    virtual void Finish(ImportReport& report) = 0;
    /// The tables that may have changed, in the order in which they are to be written.
    virtual QList<const KeyedTable*> Tables() const = 0;
};

/// Raises `RowRefused` for the second row of a file with the same key.
class SeenKeys
{
public:
    void Take(const CString& key, int line);
    /// Raises `RowRefused` when an earlier row gave another value for the same key.
    void Agree(const CString& key, const CString& value, int line);

private:
    struct Seen
    {
        CString value;
        int line = 0;
    };
    QHash<CString, Seen> m_seen;
};

/// Counts what a row changed, of one or several tables the most.
void Count(KeyedTable::Change change, ImportReport& report);
KeyedTable::Change Stronger(KeyedTable::Change left, KeyedTable::Change right);

/// `scope` is the library of a bill, quota or guide table.
std::unique_ptr<TableExchange> MakeExchange(TableKind kind, const LibraryScope& scope);

} // namespace embedded
