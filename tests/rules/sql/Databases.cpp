#include "rules/sql/Databases.h"

#include "support/Patience.h"

#include <QtSql/QSqlError>
#include <QtSql/QSqlQuery>
#include <QtSql/QSqlRecord>

#include <QtCore/QThread>
#include <QtCore/QVariant>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace test {

namespace {

CString NewName()
{
    static int count = 0;
    return u"rules-sql-%1"_s.arg(++count);
}

[[noreturn]] void Raise(const QSqlError& error, const CString& sql)
{
    throw std::runtime_error((error.text() + u"\nof: "_s + sql.left(4000)).toStdString());
}

/// The quotes of names are the standard's in both; written here anew, so that the query is not its own
/// judge.
CString QuotedName(const CString& name)
{
    return u'"' + CString(name).replace(u"\""_s, u"\"\""_s) + u'"';
}

} // namespace

SqlEngine::SqlEngine() : m_dialect(rules::SqlDialect::Sqlite), m_connection(NewName())
{
    QSqlDatabase database = QSqlDatabase::addDatabase(u"QSQLITE"_s, m_connection);
    database.setDatabaseName(u":memory:"_s);
    if (!database.open()) Raise(database.lastError(), {});
}

SqlEngine::SqlEngine(const PostgresServer& server)
    : m_dialect(rules::SqlDialect::PostgreSql), m_connection(NewName())
{
    QSqlDatabase database = QSqlDatabase::addDatabase(u"QPSQL"_s, m_connection);
    if (!database.isValid()) throw std::runtime_error("no driver QPSQL; package libqt6sql6-psql has it");
    database.setHostName(server.SocketFolder());
    database.setDatabaseName(PostgresServer::Database());
    database.setUserName(PostgresServer::User());
    // The socket is there a moment before the server takes connections.
    WaitFor(u"the PostgreSQL server"_s, [&] { return database.open(); });
    Run(u"SET client_min_messages = warning"_s);
}

SqlEngine::~SqlEngine()
{
    QSqlDatabase::database(m_connection, false).close();
    QSqlDatabase::removeDatabase(m_connection);
}

void SqlEngine::Run(const CString& sql)
{
    QSqlQuery query(QSqlDatabase::database(m_connection));
    if (!query.exec(sql)) Raise(query.lastError(), sql);
}

void SqlEngine::Fill(const CStringArray& columns, const std::vector<SqlRow>& rows)
{
    CStringArray named;
    CStringArray places;
    for (const CString& column : columns) {
        named.append(QuotedName(column) + u" text"_s);
        places.append(u"?"_s);
    }
    Run(u"DROP TABLE IF EXISTS components"_s);
    Run(u"CREATE TABLE components ("_s + named.join(u", "_s) + u')');
    Run(u"BEGIN"_s);
    QSqlQuery insert(QSqlDatabase::database(m_connection));
    const CString sql = u"INSERT INTO components VALUES ("_s + places.join(u", "_s) + u')';
    if (!insert.prepare(sql)) Raise(insert.lastError(), sql);
    for (const SqlRow& row : rows) {
        for (qsizetype i = 0; i < columns.size(); ++i) {
            const auto cell = row.find(columns[i]);
            insert.bindValue(static_cast<int>(i), cell != row.end() && cell->second
                                                      ? QVariant(*cell->second)
                                                      : QVariant(QMetaType::fromType<QString>()));
        }
        if (!insert.exec()) Raise(insert.lastError(), sql);
    }
    insert.finish();
    Run(u"COMMIT"_s);
}

std::vector<AnswerRow> SqlEngine::Ask(const CString& sql)
{
    QSqlQuery query(QSqlDatabase::database(m_connection));
    query.setForwardOnly(true);
    if (!query.exec(sql)) Raise(query.lastError(), sql);
    std::vector<AnswerRow> rows;
    const QSqlRecord record = query.record();
    while (query.next()) {
        AnswerRow& row = rows.emplace_back();
        for (int i = 0; i < record.count(); ++i)
            row[record.fieldName(i)] =
                query.isNull(i) ? std::nullopt : std::optional(query.value(i).toString());
    }
    if (query.lastError().isValid()) Raise(query.lastError(), sql);
    return rows;
}

} // namespace test
