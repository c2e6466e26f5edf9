#pragma once

#include "platform/Text.h"

#include <QtCore/QVariant>
#include <QtSql/QSqlDatabase>
#include <QtSql/QSqlQuery>

#include <chrono>
#include <functional>

class QSqlError;

namespace embedded {

/// One connection to one SQLite file, closed and forgotten by the destructor. To be used on the thread that
/// made it, after the application object has been made. Whatever goes wrong raises `Error`,
/// a write to a read-only file `ReadOnlyError`.
///
/// Several programs may have the file open: whoever finds it locked waits for the busy timeout. The journal
/// is the rollback journal, which leaves nothing beside the file and works on network drives.
class Database
{
public:
    static constexpr std::chrono::milliseconds DefaultBusyTimeout{5000};

    /// Opens the file at a path text, creating an empty one when it is missing.
    explicit Database(const CString& path, std::chrono::milliseconds busyTimeout = DefaultBusyTimeout);
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    const CString& Path() const noexcept { return m_path; }

    /// Runs one statement that gives no rows.
    void Execute(const CString& sql, const QVariantList& values = {});
    /// Runs a script of statements that end in semicolons; a semicolon must not stand inside a statement.
    void ExecuteScript(const CString& script);
    /// Inserts rows into a table, each with one value per column.
    void Insert(const CString& table, const CStringArray& columns, const QList<CStringArray>& rows);
    /// Calls `row` for each row of a query, in order. What `row` raises ends the query and travels on.
    void ForEach(const CString& sql, const QVariantList& values,
                 const std::function<void(const QSqlQuery&)>& row);

    /// The number that the file's maker left in it; 0 in a new file.
    int SchemaVersion();
    void SetSchemaVersion(int version);
    /// Whether the file holds no table yet.
    bool IsEmpty();

    /// Raises `Error` with the path and `reason`.
    [[noreturn]] void Fail(const CString& reason) const;

private:
    [[noreturn]] void Fail(const QSqlError& error) const;
    void Run(QSqlQuery& query, const CString& sql, const QVariantList& values) const;
    QVariant Single(const CString& sql);

    CString m_path;
    CString m_connection;
    QSqlDatabase m_database;
};

/// A write transaction. It takes the file's write lock at once, so that two programs never both read first
/// and then wait for each other. Rolled back by the destructor unless `Commit` was called.
class Transaction
{
public:
    explicit Transaction(Database& database);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void Commit();

private:
    Database& m_database;
    bool m_open = true;
};

} // namespace embedded
