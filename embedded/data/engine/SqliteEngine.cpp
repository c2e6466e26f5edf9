#include "embedded/data/engine/SqliteEngine.h"

#include "embedded/data/engine/Error.h"
#include "platform/Paths.h"

#include <utility>

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

/// SQLite's primary result codes that get words of their own.
enum ResultCode { Busy = 5, Locked = 6, ReadOnly = 8, Corrupt = 11, NotADatabase = 26 };

} // namespace

SqliteEngine::SqliteEngine(CString path, std::chrono::milliseconds busyTimeout)
    : m_path(std::move(path)), m_busyTimeout(busyTimeout)
{
}

CString SqliteEngine::Driver() const
{
    return u"QSQLITE"_s;
}

CString SqliteEngine::Name() const
{
    return platform::ToNative(m_path);
}

void SqliteEngine::SetUp(QSqlDatabase& connection) const
{
    connection.setDatabaseName(platform::ToNative(m_path));
    connection.setConnectOptions(u"QSQLITE_BUSY_TIMEOUT=%1"_s.arg(m_busyTimeout.count()));
}

CStringArray SqliteEngine::BeginWriting() const
{
    return {u"BEGIN IMMEDIATE"_s};
}

CString SqliteEngine::BeginReading() const
{
    return u"BEGIN"_s;
}

int SqliteEngine::SchemaVersion(Statements& database) const
{
    return database.Single(u"PRAGMA user_version"_s).toInt();
}

void SqliteEngine::SetSchemaVersion(Statements& database, int version) const
{
    database.Execute(u"PRAGMA user_version = %1"_s.arg(version));
}

bool SqliteEngine::IsEmpty(Statements& database) const
{
    return database.Single(u"SELECT count(*) FROM sqlite_master"_s).toInt() == 0;
}

bool SqliteEngine::HasTable(Statements& database, const CString& table) const
{
    return database.Single(u"SELECT count(*) FROM sqlite_master WHERE type = 'table' AND name = ?"_s, {table})
               .toInt() > 0;
}

CString SqliteEngine::InsertionOrder() const
{
    return u"rowid"_s;
}

void SqliteEngine::KeepInsertionOrder(Statements&, const CStringArray&) const
{
    // Every table has its rowid, and what stands in the way of a key is deleted before it is inserted.
}

void SqliteEngine::ReplaceRows(Statements& database, const TablePart& part, const QList<CStringArray>& rows,
                               const std::function<void()>& step) const
{
    const bool isWhole = part.partColumn.isEmpty();
    if (isWhole) {
        database.Execute(u"DELETE FROM %1"_s.arg(part.table));
    } else {
        database.Execute(u"DELETE FROM %1 WHERE %2 = ?"_s.arg(part.table, part.partColumn), {part.partValue});
    }
    const CStringArray columns = isWhole ? part.columns : part.columns + CStringArray{part.partColumn};
    constexpr qsizetype Chunk = 500;
    for (qsizetype first = 0; first < rows.size(); first += Chunk) {
        QList<CStringArray> some = rows.mid(first, Chunk);
        if (!isWhole) {
            for (CStringArray& row : some)
                row.append(part.partValue);
        }
        database.Insert(part.table, columns, some);
        for (qsizetype row = 0; step && row < some.size(); ++row)
            step();
    }
}

void SqliteEngine::Raise(const QSqlError& error) const
{
    const auto say = [this](const CString& reason) { return Name() + u"："_s + reason; };
    switch (error.nativeErrorCode().toInt() & 0xff) {
    case Busy:
    case Locked:
        throw BusyError(say(u"数据库被其他程序占用"_s));
    case ReadOnly:
        throw ReadOnlyError(say(u"只读，不能写入"_s));
    case Corrupt:
    case NotADatabase:
        throw Error(say(u"数据库已损坏（%1）"_s.arg(error.driverText() + u' ' + error.databaseText())));
    default:
        throw Error(say(error.text().trimmed()));
    }
}

} // namespace embedded
