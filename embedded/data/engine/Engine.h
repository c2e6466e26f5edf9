#pragma once

#include "embedded/data/engine/SilenceWatch.h"
#include "embedded/data/engine/Statements.h"

#include <QtSql/QSqlDatabase>
#include <QtSql/QSqlError>

#include <chrono>
#include <functional>
#include <memory>

namespace embedded {

/// What differs between the database engines: how a connection is made, how a writing begins, where the
/// version of a schema stands, in what order rows were inserted, how many rows are replaced, and what a
/// failure means. All else is SQL that both understand. One object serves one `Database`.
class Engine
{
public:
    virtual ~Engine();

    /// Of the toolkit's driver.
    virtual CString Driver() const = 0;
    /// What people call the database; stands in front of messages.
    virtual CString Name() const = 0;
    /// Sets up a connection that is not open yet.
    virtual void SetUp(QSqlDatabase& connection) const = 0;
    /// Whether rows come one by one, so that a query uses no memory for those to come. The connection then
    /// serves nothing else until the last one.
    virtual bool ReadsRowByRow() const = 0;
    /// How many rows an insertion of many sends at once.
    virtual qsizetype RowsPerInsertion() const = 0;

    /// The statements that a new connection begins with.
    virtual CStringArray Greeting() const = 0;
    /// The statements that begin a write transaction: whoever runs them first keeps other writers out.
    virtual CStringArray BeginWriting() const = 0;
    /// The statement that begins a transaction that only reads, and sees one state throughout.
    virtual CString BeginReading() const = 0;
    /// See `Transaction::KeepOthersFrom`.
    virtual void KeepOthersFrom(Statements& database, const CStringArray& tables) const = 0;
    /// Whoever sees to it that nobody waits for ever on the connection, which is open; null where nobody can.
    virtual std::unique_ptr<SilenceWatch> WatchOver(const QSqlDatabase& connection) const = 0;

    virtual int SchemaVersion(Statements& database) const = 0;
    virtual void SetSchemaVersion(Statements& database, int version) const = 0;
    virtual bool IsEmpty(Statements& database) const = 0;
    virtual bool HasTable(Statements& database, const CString& table) const = 0;

    /// The column that tells in which order rows were inserted.
    virtual CString InsertionOrder() const = 0;
    /// Gives that column to tables that were just created, where the engine has none of its own, and lets a
    /// transaction break their keys on the way to its end.
    virtual void KeepInsertionOrder(Statements& database, const CStringArray& tables) const = 0;
    /// See `Database::ReplaceRows`.
    virtual void ReplaceRows(Statements& database, const TablePart& part, const QList<CStringArray>& rows,
                             const std::function<void()>& step) const = 0;

    /// Raises the `Error` that a failure means; the text begins with `Name()`.
    [[noreturn]] virtual void Raise(const QSqlError& error) const = 0;
};

} // namespace embedded
