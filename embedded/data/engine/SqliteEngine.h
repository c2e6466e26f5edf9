#pragma once

#include "embedded/data/engine/Engine.h"

namespace embedded {

/// One file, opened by the engine within the program.
class SqliteEngine final : public Engine
{
public:
    /// `path` is a path text.
    SqliteEngine(CString path, std::chrono::milliseconds busyTimeout);

    CString Driver() const override;
    CString Name() const override;
    void SetUp(QSqlDatabase& connection) const override;
    bool ReadsRowByRow() const override { return true; }
    qsizetype RowsPerInsertion() const override { return 1; }
    CStringArray Greeting() const override { return {}; }
    CStringArray BeginWriting() const override;
    CString BeginReading() const override;
    /// Whoever begins to write keeps all others out.
    void KeepOthersFrom(Statements&, const CStringArray&) const override {}
    std::unique_ptr<SilenceWatch> WatchOver(const QSqlDatabase&) const override { return nullptr; }
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
    CString m_path;
    std::chrono::milliseconds m_busyTimeout;
};

} // namespace embedded
