#pragma once

#include "platform/Text.h"

#include <QtCore/QVariant>
#include <QtSql/QSqlQuery>

#include <functional>

namespace embedded {

/// The rows of a table, or of the part of it where one column has one value.
struct TablePart
{
    CString table;
    CStringArray columns; ///< those that the rows give, the keys first; without `partColumn`
    int keys = 1;         ///< how many columns tell a row from the others of the part
    CString partColumn{}; ///< empty for the whole table
    CString partValue{};
};

/// The running of SQL, as `Database` does it. What goes wrong raises `Error`.
class Statements
{
public:
    virtual ~Statements();

    /// Runs one statement that gives no rows.
    virtual void Execute(const CString& sql, const QVariantList& values = {}) = 0;
    /// Inserts rows into a table, each with one value per column.
    virtual void Insert(const CString& table, const CStringArray& columns,
                        const QList<CStringArray>& rows) = 0;
    /// Calls `row` for each row of a query, in order. What `row` raises ends the query and travels on. `row`
    /// must not run statements of this.
    virtual void ForEach(const CString& sql, const QVariantList& values,
                         const std::function<void(const QSqlQuery&)>& row) = 0;
    /// The first value of a query's last row; invalid when it gives none.
    virtual QVariant Single(const CString& sql, const QVariantList& values = {}) = 0;
};

} // namespace embedded
