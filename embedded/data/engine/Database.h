#pragma once

#include "embedded/data/engine/Statements.h"

#include <QtCore/QVariant>
#include <QtSql/QSqlDatabase>
#include <QtSql/QSqlQuery>

#include <chrono>
#include <functional>
#include <memory>

namespace embedded {

class Engine;
class SilenceWatch;
struct Service;

/// One connection to one database, closed and forgotten by the destructor. To be used on the thread that
/// made it, after the application object has been made. Whatever goes wrong raises `Error`: a write to a
/// read-only file or server `ReadOnlyError`, one for which the connected user has no right `RightsError`, a
/// server that cannot be reached or has gone in the middle `UnreachableError`, also one that stands still:
/// within ten seconds, as long as it answers nobody else either.
///
/// The database is an SQLite file or a PostgreSQL server; what differs between them is the matter of `Engine`
/// alone. Marks for values are "?" for both. Several programs may use one database: whoever finds it locked
/// waits for the busy timeout, and gives up with `BusyError`. The journal of a file is the rollback journal,
/// which leaves nothing beside the file and works on network drives.
class Database final : public Statements
{
public:
    /// Five seconds, or as many as the environment variable KTQDDE_DATABASE_WAIT says.
    static std::chrono::milliseconds UsualBusyTimeout();

    /// Opens the file at a path text, creating an empty one when it is missing.
    explicit Database(const CString& path, std::chrono::milliseconds busyTimeout = UsualBusyTimeout());
    /// Connects to a server. Tables are those of the schema "ktqdde" there, which may be missing. Unless the
    /// server is on this machine the connection is encrypted or is none.
    explicit Database(const Service& service, std::chrono::milliseconds busyTimeout = UsualBusyTimeout());
    ~Database() override;
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    /// What people call the database: the native path of a file, the name of a service.
    CString Name() const;

    void Execute(const CString& sql, const QVariantList& values = {}) override;
    /// Runs a script of statements that end in semicolons; a semicolon must not stand inside a statement.
    void ExecuteScript(const CString& script);
    /// Runs a script whose statements are separated by lines that hold a semicolon alone, as functions need
    /// that hold semicolons themselves.
    void ExecuteWholeStatements(const CString& script);
    void Insert(const CString& table, const CStringArray& columns, const QList<CStringArray>& rows) override;
    /// Makes `rows` the rows of a table or of a part of it, in that order, each with one value per column.
    /// Calls `step` for each row; what it raises travels on. Keys must differ. On a server rows that stay
    /// what they were are not touched, so that its record of changes tells only those. To be called in a
    /// write transaction.
    void ReplaceRows(const TablePart& part, const QList<CStringArray>& rows,
                     const std::function<void()>& step = {});
    void ForEach(const CString& sql, const QVariantList& values,
                 const std::function<void(const QSqlQuery&)>& row) override;
    QVariant Single(const CString& sql, const QVariantList& values = {}) override;

    /// Creates the tables of a script of "CREATE TABLE NAME (" statements. `InsertionOrder()` of such tables
    /// tells the order of their rows.
    void CreateTables(const CString& script);
    /// The column to order by for rows in the order in which they were inserted.
    CString InsertionOrder() const;

    /// The number that the database's maker left in it; 0 in a new one.
    int SchemaVersion();
    void SetSchemaVersion(int version);
    /// Whether the database holds no table yet.
    bool IsEmpty();
    bool HasTable(const CString& table);
    /// The columns of a table in their order, without the one that keeps the order of insertion.
    CStringArray ColumnsOf(const CString& table);

    /// Raises `Error` with the name and `reason`.
    [[noreturn]] void Fail(const CString& reason) const;

private:
    friend class Transaction;
    friend class Snapshot;

    explicit Database(std::unique_ptr<Engine> engine);
    void Run(QSqlQuery& query, const CString& sql, const QVariantList& values) const;
    void InsertSome(const CString& table, const CStringArray& columns, const QList<CStringArray>& rows);

    std::unique_ptr<Engine> m_engine;
    CString m_connection;
    QSqlDatabase m_database;
    std::unique_ptr<SilenceWatch> m_watch; ///< null where nothing can fall silent
};

/// A write transaction. It takes the database's write lock at once, so that two programs never both read
/// first and then wait for each other. Rolled back by the destructor unless `Commit` was called.
///
/// A server that goes while it commits may have done so or not: `Commit` then raises `UnansweredError`, and
/// whoever has to know looks again.
class Transaction
{
public:
    explicit Transaction(Database& database);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    /// Until its end nobody else changes the tables, by whatever program; they wait for those who do so now.
    /// Without this our own programs alone keep out of each other's way on a server.
    void KeepOthersFrom(const CStringArray& tables);

    void Commit();

private:
    Database& m_database;
    bool m_open = true;
};

/// A transaction that only reads: all queries see one state. Ends with this object.
class Snapshot
{
public:
    explicit Snapshot(Database& database);
    ~Snapshot();
    Snapshot(const Snapshot&) = delete;
    Snapshot& operator=(const Snapshot&) = delete;

private:
    Database& m_database;
};

} // namespace embedded
