#pragma once

#include "embedded/data/exchange/ImportReport.h"
#include "embedded/data/exchange/ImportRow.h"
#include "embedded/data/exchange/KeyedTable.h"
#include "embedded/data/exchange/SeenKeys.h"

namespace embedded {

/// One kind of table between the catalogue and its CSV form. An import prepares, loads, begins, takes every
/// row, finishes and stores, all within one transaction; an export loads and asks for the rows.
class TableExchange
{
public:
    TableExchange(const TableExchange&) = delete;
    TableExchange& operator=(const TableExchange&) = delete;
    virtual ~TableExchange();

    const CArray<ImportColumn>& Columns() const noexcept { return m_columns; }
    /// Makes what only imports need in the catalogue.
    virtual void Prepare(Database& database);
    virtual void Load(Database& database) = 0;
    /// The CSV form of what is loaded, one field per column.
    virtual QList<CStringArray> Rows() const = 0;

    /// Makes ready for rows; `replace` takes out what the file is to replace. Raises `RowRefused` when the
    /// table can take none.
    void Begin(bool replace);
    /// Takes a row in. Raises `RowRefused`; what it has changed by then is never stored.
    virtual void Take(const ImportRow& row, ImportReport& report) = 0;
    /// Checks and completes what only the whole file shows. Adds refused rows to the report.
    virtual void Finish(ImportReport& report) = 0;
    /// The tables that may have changed, in the order in which they are to be written.
    virtual QList<const KeyedTable*> Tables() const = 0;

protected:
    explicit TableExchange(CArray<ImportColumn> columns);

    /// Whether the file takes the place of what the table held. Told by `Begin`.
    bool Replaces() const noexcept { return m_replaces; }

private:
    /// Raises `RowRefused` when the table can take no rows.
    virtual void RequireTarget() const;
    /// Takes out what a file is to replace.
    virtual void Clear() = 0;

    CArray<ImportColumn> m_columns;
    bool m_replaces = false;
};

/// Counts what a row changed, of one or several tables the most.
void Count(KeyedTable::Change change, ImportReport& report);
KeyedTable::Change Stronger(KeyedTable::Change left, KeyedTable::Change right);

} // namespace embedded
