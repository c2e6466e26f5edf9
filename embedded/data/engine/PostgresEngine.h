#pragma once

#include "embedded/data/engine/Engine.h"
#include "embedded/data/engine/Service.h"

namespace embedded {

/// A PostgreSQL server, reached through an entry of its client library's service file. All tables stand in
/// the schema "ktqdde" of the entry's database.
class PostgresEngine final : public Engine
{
public:
    static CString SchemaName();

    /// `busyTimeout` is how long a statement waits for the locks of others.
    PostgresEngine(Service service, std::chrono::milliseconds busyTimeout);

    CString Driver() const override;
    CString Name() const override;
    /// Raises `Error` for a name that can be no service, and where the toolkit has no driver for the server.
    void SetUp(QSqlDatabase& connection) const override;
    bool ReadsRowByRow() const override { return false; }
    qsizetype RowsPerInsertion() const override;
    CStringArray Greeting() const override;
    CStringArray BeginWriting() const override;
    CString BeginReading() const override;
    void KeepOthersFrom(Statements& database, const CStringArray& tables) const override;
    std::unique_ptr<SilenceWatch> WatchOver(const QSqlDatabase& connection) const override;
    int SchemaVersion(Statements& database) const override;
    void SetSchemaVersion(Statements& database, int version) const override;
    bool IsEmpty(Statements& database) const override;
    bool HasTable(Statements& database, const CString& table) const override;
    CString InsertionOrder() const override;
    void KeepInsertionOrder(Statements& database, const CStringArray& tables) const override;
    void ReplaceRows(Statements& database, const TablePart& part, const QList<CStringArray>& rows,
                     const std::function<void()>& step) const override;
    [[noreturn]] void Raise(const QSqlError& error) const override;

private:
    int AttemptTime(int usual) const;
    CString ConnectOptions(int usual) const;
    bool IsAnswering() const;

    Service m_service;
    std::chrono::milliseconds m_busyTimeout;
};

} // namespace embedded
