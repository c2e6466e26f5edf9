#include "embedded/data/sqlite/Database.h"

#include "embedded/data/sqlite/Error.h"
#include "platform/Paths.h"

#include <QtSql/QSqlError>

#include <atomic>

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

CString NextConnectionName()
{
    static std::atomic<unsigned> last{0};
    return u"ktqdde-embedded-"_s + CString::number(++last);
}

/// SQLite's primary result codes that get words of their own.
enum ResultCode { Busy = 5, Locked = 6, ReadOnly = 8, Corrupt = 11, NotADatabase = 26 };

} // namespace

Database::Database(const CString& path, std::chrono::milliseconds busyTimeout)
    : m_path(path), m_connection(NextConnectionName()),
      m_database(QSqlDatabase::addDatabase(u"QSQLITE"_s, m_connection))
{
    m_database.setDatabaseName(platform::ToNative(path));
    m_database.setConnectOptions(u"QSQLITE_BUSY_TIMEOUT=%1"_s.arg(busyTimeout.count()));
    if (m_database.open()) return;
    const QSqlError error = m_database.lastError();
    m_database = {};
    QSqlDatabase::removeDatabase(m_connection);
    Fail(error);
}

Database::~Database()
{
    m_database.close();
    m_database = {};
    QSqlDatabase::removeDatabase(m_connection);
}

void Database::Run(QSqlQuery& query, const CString& sql, const QVariantList& values) const
{
    query.setForwardOnly(true);
    if (!query.prepare(sql)) Fail(query.lastError());
    for (const QVariant& value : values)
        query.addBindValue(value);
    if (!query.exec()) Fail(query.lastError());
}

void Database::Execute(const CString& sql, const QVariantList& values)
{
    QSqlQuery query(m_database);
    Run(query, sql, values);
}

void Database::ExecuteScript(const CString& script)
{
    for (const CString& statement : script.split(u';')) {
        if (!statement.trimmed().isEmpty()) Execute(statement);
    }
}

void Database::Insert(const CString& table, const CStringArray& columns, const QList<CStringArray>& rows)
{
    const CStringArray marks(columns.size(), u"?"_s);
    QSqlQuery query(m_database);
    if (!query.prepare(
            u"INSERT INTO %1 (%2) VALUES (%3)"_s.arg(table, columns.join(u','), marks.join(u',')))) {
        Fail(query.lastError());
    }
    for (const CStringArray& row : rows) {
        for (qsizetype column = 0; column < columns.size(); ++column) {
            // A null text would become SQL's NULL, which is no text.
            const CString& text = row.at(column);
            query.bindValue(static_cast<int>(column), text.isNull() ? u""_s : text);
        }
        if (!query.exec()) Fail(query.lastError());
    }
}

void Database::ForEach(const CString& sql, const QVariantList& values,
                       const std::function<void(const QSqlQuery&)>& row)
{
    QSqlQuery query(m_database);
    Run(query, sql, values);
    while (query.next())
        row(query);
    if (query.lastError().isValid()) Fail(query.lastError());
}

QVariant Database::Single(const CString& sql)
{
    QVariant result;
    ForEach(sql, {}, [&](const QSqlQuery& row) { result = row.value(0); });
    return result;
}

int Database::SchemaVersion()
{
    return Single(u"PRAGMA user_version"_s).toInt();
}

void Database::SetSchemaVersion(int version)
{
    Execute(u"PRAGMA user_version = %1"_s.arg(version));
}

bool Database::IsEmpty()
{
    return Single(u"SELECT count(*) FROM sqlite_master"_s).toInt() == 0;
}

void Database::Fail(const CString& reason) const
{
    throw Error(platform::ToNative(m_path) + u"："_s + reason);
}

void Database::Fail(const QSqlError& error) const
{
    switch (error.nativeErrorCode().toInt() & 0xff) {
    case Busy:
    case Locked:
        Fail(u"数据库被其他程序占用"_s);
    case ReadOnly:
        throw ReadOnlyError(platform::ToNative(m_path) + u"：只读，不能写入"_s);
    case Corrupt:
    case NotADatabase:
        Fail(u"数据库已损坏（%1）"_s.arg(error.driverText() + u' ' + error.databaseText()));
    default:
        Fail(error.text().trimmed());
    }
}

Transaction::Transaction(Database& database) : m_database(database)
{
    m_database.Execute(u"BEGIN IMMEDIATE"_s);
}

Transaction::~Transaction()
{
    if (!m_open) return;
    try {
        m_database.Execute(u"ROLLBACK"_s);
    } catch (const Error&) {
        // SQLite has already rolled back by itself after some failures; the first error is the one to tell.
    }
}

void Transaction::Commit()
{
    m_database.Execute(u"COMMIT"_s);
    m_open = false;
}

} // namespace embedded
