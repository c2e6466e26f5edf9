#include "embedded/data/engine/PostgresEngine.h"

#include "embedded/data/engine/Error.h"
#include "platform/Socket.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QLibrary>
#include <QtSql/QSqlDriver>

#include <algorithm>
#include <limits>
#include <utility>

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

/// The column that keeps the order of insertion, since a table here has none of its own.
const CString Place = u"place"_s;
/// Whoever writes takes this number first. It is the name of the product in ASCII.
constexpr qint64 WriteLock = 0x4b'74'51'64'44'65;

/// The seconds after which an attempt to connect, and a server that answers no more, is given up; and those
/// for asking whether one is there that has fallen silent. The client library counts those of an attempt from
/// its beginning to the server's word that it takes questions, encryption and password included, for each
/// address of the host anew. An entry may have another time for both attempts.
constexpr int Patience = 5;
constexpr int ProbePatience = 4;

/// A function of the client library, which the toolkit has loaded; null where it is not found.
template <typename Function>
Function OfClient(const char* name)
{
#ifdef Q_OS_WIN
    return reinterpret_cast<Function>(QLibrary(u"libpq"_s).resolve(name));
#else
    return reinterpret_cast<Function>(QLibrary(u"pq"_s, 5).resolve(name));
#endif
}

CString Each(const CStringArray& columns, const CString& form, const CString& between)
{
    CStringArray texts;
    for (const CString& column : columns)
        texts.append(form.arg(column));
    return texts.join(between);
}

/// What the server calls an error, five characters; empty when the error is the client's.
CString StateOf(const QSqlError& error)
{
    return error.nativeErrorCode();
}

/// What the server says, in its first line and without the word for how severe it is.
CString SaidIn(const QSqlError& error)
{
    const CString line = error.databaseText().trimmed().section(u'\n', 0, 0);
    const qsizetype severity = line.indexOf(u":  "_s);
    return severity < 0 ? line : line.sliced(severity + 3);
}

/// As the client library has it, see `PQping`.
using Ping = int (*)(const char*);
enum PingAnswer { NoResponse = 2, NoAttempt = 3 };

/// Null where the client library is not found.
Ping FindPing()
{
    static const auto ping = OfClient<Ping>("PQping");
    return ping;
}

/// Whether the client library has no entry of a service's name, wherever it looks for one. It says so in the
/// user's language; what does not depend on that is that it tries no address then.
bool IsUnknown(const Service& service, const QSqlError& error)
{
    if (service.isRead || error.type() != QSqlError::ConnectionError || FindPing() == nullptr) return false;
    const CString options = u"service=%1 host=127.0.0.1 hostaddr=127.0.0.1 port=1 connect_timeout=2"_s;
    return FindPing()(options.arg(service.name).toUtf8().constData()) == NoAttempt;
}

/// Whether the server is not there, or not there any more: connection exceptions, and what it says when it
/// shuts down, starts up or has recovered from a crash.
bool IsGone(const QSqlError& error)
{
    const CString state = StateOf(error);
    const bool isOfClient = state.isEmpty() && !error.databaseText().isEmpty();
    // The toolkit asks nothing of a connection that it knows to be broken, and tells no error either.
    const bool isBroken = error.type() == QSqlError::NoError;
    return isBroken || error.type() == QSqlError::ConnectionError || isOfClient || state.startsWith(u"08") ||
           state.startsWith(u"57P");
}

} // namespace

CString PostgresEngine::SchemaName()
{
    return u"ktqdde"_s;
}

PostgresEngine::PostgresEngine(Service service, std::chrono::milliseconds busyTimeout)
    : m_service(std::move(service)), m_busyTimeout(busyTimeout)
{
}

CString PostgresEngine::Driver() const
{
    return u"QPSQL"_s;
}

CString PostgresEngine::Name() const
{
    return u"办公室“%1”"_s.arg(m_service.name);
}

void PostgresEngine::SetUp(QSqlDatabase& connection) const
{
    if (const CString fault = Service::NameFault(m_service.name); !fault.isEmpty())
        throw Error(Name() + u"："_s + fault);
    if (!connection.isValid()) throw Error(Name() + u"：没有连接 PostgreSQL 的驱动（QPSQL），请安装它"_s);
    connection.setConnectOptions(ConnectOptions(Patience));
}

/// The seconds after which an attempt to connect is given up.
int PostgresEngine::AttemptTime(int usual) const
{
    return m_service.connectTimeout > 0 ? m_service.connectTimeout : usual;
}

/// `usual` is the time for the attempt to connect.
CString PostgresEngine::ConnectOptions(int usual) const
{
    CStringArray options{u"service=%1"_s.arg(m_service.name),
                         u"application_name=ktqdde"_s,
                         u"connect_timeout=%1"_s.arg(AttemptTime(usual)),
                         u"keepalives_idle=%1"_s.arg(Patience),
                         u"keepalives_interval=%1"_s.arg(Patience),
                         u"keepalives_count=2"_s,
                         u"tcp_user_timeout=%1"_s.arg(2000 * Patience)};
    // Stricter than asked for, such as with the server's name verified, is left to the entry.
    if (!m_service.IsLocal() && !m_service.sslMode.startsWith(u"verify-"))
        options.append(u"sslmode=require"_s);
    return options.join(u';');
}

/// What refuses at once is there as well. The toolkit's own way to a connection ends with questions for which
/// nobody looks at the clock.
bool PostgresEngine::IsAnswering() const
{
    if (FindPing() == nullptr) return true;
    QElapsedTimer time;
    time.start();
    const QByteArray options = ConnectOptions(ProbePatience).replace(u';', u' ').toUtf8();
    // The client library counts whole seconds of the clock and may begin in the middle of one.
    return FindPing()(options.constData()) != NoResponse ||
           !time.hasExpired((AttemptTime(ProbePatience) - 1) * 1000);
}

std::unique_ptr<SilenceWatch> PostgresEngine::WatchOver(const QSqlDatabase& connection) const
{
    // The toolkit hands its connection out, but not the socket; the client library, which it has loaded,
    // does.
    using SocketOf = int (*)(const void*);
    static const auto socketOf = OfClient<SocketOf>("PQsocket");
    const QVariant handle = connection.driver()->handle();
    const QByteArrayView type =
        handle.typeName(); // by either name of the client library's, as the toolkit spells it
    if (socketOf == nullptr || (type != "pg_conn*" && type != "PGconn*")) return nullptr;
    const void* const opened = *static_cast<void* const*>(handle.constData());
    return std::make_unique<SilenceWatch>(
        SilenceWatch::Questions{[engine = *this] { return engine.IsAnswering(); },
                                [opened] { return platform::BytesThrough(socketOf(opened)); },
                                [opened] { platform::EndConnection(socketOf(opened)); }});
}

/// Their readers go on.
void PostgresEngine::KeepOthersFrom(Statements& database, const CStringArray& tables) const
{
    database.Execute(u"LOCK TABLE %1 IN SHARE ROW EXCLUSIVE MODE"_s.arg(tables.join(u", "_s)));
}

qsizetype PostgresEngine::RowsPerInsertion() const
{
    return 100;
}

CStringArray PostgresEngine::Greeting() const
{
    // To the server no time at all is no limit.
    const auto longest = static_cast<qint64>(std::numeric_limits<int>::max());
    const qint64 wait = std::clamp<qint64>(m_busyTimeout.count(), 1, longest);
    // One message, for each is a way to the server and back.
    return {u"SET search_path TO %1; SET lock_timeout TO %2; SET client_min_messages TO error; "
            "SET standard_conforming_strings TO on"_s.arg(SchemaName())
                .arg(wait)};
}

CStringArray PostgresEngine::BeginWriting() const
{
    return {u"BEGIN"_s, u"SELECT pg_advisory_xact_lock(%1)"_s.arg(WriteLock)};
}

CString PostgresEngine::BeginReading() const
{
    return u"BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY"_s;
}

int PostgresEngine::SchemaVersion(Statements& database) const
{
    if (!HasTable(database, u"schema_version"_s)) return 0;
    return database.Single(u"SELECT version FROM schema_version"_s).toInt();
}

void PostgresEngine::SetSchemaVersion(Statements& database, int version) const
{
    database.Execute(u"CREATE TABLE IF NOT EXISTS schema_version (version INTEGER NOT NULL)"_s);
    database.Execute(u"DELETE FROM schema_version"_s);
    database.Execute(u"INSERT INTO schema_version VALUES (?)"_s, {version});
}

bool PostgresEngine::IsEmpty(Statements& database) const
{
    return database.Single(u"SELECT count(*) FROM pg_tables WHERE schemaname = ?"_s, {SchemaName()})
               .toInt() == 0;
}

bool PostgresEngine::HasTable(Statements& database, const CString& table) const
{
    // The name is one of ours. As a value it would be prepared, asked for and forgotten: three messages.
    return database.Single(u"SELECT to_regclass('%1.%2') IS NOT NULL"_s.arg(SchemaName(), table)).toBool();
}

CString PostgresEngine::InsertionOrder() const
{
    return Place;
}

void PostgresEngine::KeepInsertionOrder(Statements& database, const CStringArray& tables) const
{
    for (const CString& table : tables) {
        database.Execute(
            u"ALTER TABLE %1 ADD COLUMN %2 BIGINT NOT NULL GENERATED BY DEFAULT AS IDENTITY"_s.arg(table,
                                                                                                   Place));
        // Rows that exchange their keys must pass each other on the way to the commit.
        database.Execute(
            u"DO $$DECLARE key record; BEGIN "
            "FOR key IN SELECT conname, pg_get_constraintdef(oid) AS definition "
            "FROM pg_constraint WHERE conrelid = '%1'::regclass AND contype IN ('p', 'u') LOOP "
            "EXECUTE format('ALTER TABLE %1 DROP CONSTRAINT %I', key.conname); "
            "EXECUTE format('ALTER TABLE %1 ADD CONSTRAINT %I %s DEFERRABLE INITIALLY DEFERRED', "
            "key.conname, key.definition); END LOOP; END$$"_s.arg(table));
    }
}

void PostgresEngine::ReplaceRows(Statements& database, const TablePart& part, const QList<CStringArray>& rows,
                                 const std::function<void()>& step) const
{
    const CString& table = part.table;
    const CStringArray columns = part.columns + CStringArray{Place};
    const CString same = Each(part.columns.first(part.keys), u"old.%1 = new.%1"_s, u" AND "_s);
    const bool isWhole = part.partColumn.isEmpty();
    const CString inPart = isWhole ? u"true"_s : u"old.%1 = ?"_s.arg(part.partColumn);
    const QVariantList partValue = isWhole ? QVariantList() : QVariantList{part.partValue};

    database.Execute(
        u"CREATE TEMPORARY TABLE incoming ON COMMIT DROP AS SELECT %1 FROM %2 WITH NO DATA"_s.arg(
            columns.join(u','), table));
    const qsizetype chunk = RowsPerInsertion();
    for (qsizetype first = 0; first < rows.size(); first += chunk) {
        QList<CStringArray> some = rows.mid(first, chunk);
        for (qsizetype row = 0; row < some.size(); ++row)
            some[row].append(CString::number(first + row));
        database.Insert(u"incoming"_s, columns, some);
        for (qsizetype row = 0; step && row < some.size(); ++row)
            step();
    }
    database.Execute(
        u"DELETE FROM %1 AS old WHERE %2 AND NOT EXISTS (SELECT FROM incoming AS new WHERE %3)"_s.arg(
            table, inPart, same),
        partValue);
    database.Execute(u"UPDATE %1 AS old SET %2 FROM incoming AS new WHERE %3 AND %4 AND "
                     "(%5) IS DISTINCT FROM (%6)"_s.arg(table, Each(columns, u"%1 = new.%1"_s, u", "_s),
                                                        inPart, same, Each(columns, u"old.%1"_s, u", "_s),
                                                        Each(columns, u"new.%1"_s, u", "_s)),
                     partValue);
    const CString partColumn = isWhole ? CString() : u", "_s + part.partColumn;
    database.Execute(u"INSERT INTO %1 (%2%3) SELECT %4%5 FROM incoming AS new WHERE NOT EXISTS "
                     "(SELECT FROM %1 AS old WHERE %6 AND %7) ORDER BY %8"_s.arg(
                         table, columns.join(u','), partColumn, Each(columns, u"new.%1"_s, u", "_s),
                         isWhole ? CString() : u", ?"_s, inPart, same, Place),
                     partValue + partValue);
    database.Execute(u"DROP TABLE incoming"_s);
}

void PostgresEngine::Raise(const QSqlError& error) const
{
    const CString text = SaidIn(error);
    const auto say = [this](const CString& reason) { return Name() + u"："_s + reason; };
    const auto because = [&](const CString& what) {
        return say(text.isEmpty() ? what : what + u"（%1）"_s.arg(text));
    };
    if (IsUnknown(m_service, error)) throw Error(say(u"连接服务文件（pg_service.conf）中没有这个名称"_s));
    const CString state = StateOf(error);
    if (IsGone(error)) throw UnreachableError(because(u"连不上服务器"_s));
    if (state == u"42501") throw RightsError(because(u"连接的用户没有做这件事的权限"_s));
    if (state == u"25006") throw ReadOnlyError(say(u"服务器只读，不能写入"_s));
    if (state == u"55P03" || state == u"40P01" || state == u"40001")
        throw BusyError(say(u"数据库被其他程序占用"_s));
    throw Error(say(text.isEmpty() ? error.text().trimmed() : text));
}

} // namespace embedded
