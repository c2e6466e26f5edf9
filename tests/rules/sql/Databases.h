#pragma once

#include "rules/sql/RulesSql.h"
#include "support/server/PostgresServer.h"

#include <QtSql/QSqlDatabase>

#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace test {

/// A row of the components table: texts by column, nothing for NULL.
using SqlRow = std::map<CString, std::optional<CString>>;
/// A row of an answer, by heading; nothing for NULL.
using AnswerRow = std::map<CString, std::optional<CString>>;

/// A database that answers queries of one dialect.
class SqlEngine
{
public:
    /// SQLite in memory.
    SqlEngine();
    /// A database of a server, which must outlive this.
    explicit SqlEngine(const PostgresServer& server);
    ~SqlEngine();
    SqlEngine(const SqlEngine&) = delete;
    SqlEngine& operator=(const SqlEngine&) = delete;

    rules::SqlDialect Dialect() const noexcept { return m_dialect; }
    /// Makes the table of components anew, with these columns and rows. Raises `std::runtime_error`, as all
    /// do.
    void Fill(const CStringArray& columns, const std::vector<SqlRow>& rows);
    /// Runs a query.
    std::vector<AnswerRow> Ask(const CString& sql);

private:
    void Run(const CString& sql);

    rules::SqlDialect m_dialect;
    CString m_connection;
};

} // namespace test
