#include "embedded/data/engine/Database.h"

#include "embedded/data/engine/Engine.h"
#include "embedded/data/engine/Error.h"
#include "embedded/data/engine/PostgresEngine.h"
#include "embedded/data/engine/SilenceWatch.h"
#include "embedded/data/engine/SqliteEngine.h"

#include <QtCore/QRegularExpression>
#include <QtSql/QSqlError>
#include <QtSql/QSqlRecord>

#include <algorithm>
#include <atomic>
#include <utility>

namespace embedded {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

CString NextConnectionName()
{
    static std::atomic<unsigned> last{0};
    return u"ktqdde-embedded-"_s + CString::number(++last);
}

void RollBack(Database& database) noexcept
{
    try {
        database.Execute(u"ROLLBACK"_s);
    } catch (const Error&) {
        // An engine has rolled back by itself after some failures; the first error is the one to tell.
    }
}

} // namespace

std::chrono::milliseconds Database::UsualBusyTimeout()
{
    bool isNumber = false;
    const int seconds = qEnvironmentVariableIntValue("KTQDDE_DATABASE_WAIT", &isNumber);
    return isNumber && seconds >= 0 ? std::chrono::seconds(seconds) : 5s;
}

Database::Database(const CString& path, std::chrono::milliseconds busyTimeout)
    : Database(std::make_unique<SqliteEngine>(path, busyTimeout))
{
}

Database::Database(const Service& service, std::chrono::milliseconds busyTimeout)
    : Database(std::make_unique<PostgresEngine>(service, busyTimeout))
{
}

Database::Database(std::unique_ptr<Engine> engine)
    : m_engine(std::move(engine)), m_connection(NextConnectionName()),
      m_database(QSqlDatabase::addDatabase(m_engine->Driver(), m_connection))
{
    try {
        m_engine->SetUp(m_database);
        if (!m_database.open()) m_engine->Raise(m_database.lastError());
        m_watch = m_engine->WatchOver(m_database);
        for (const CString& statement : m_engine->Greeting())
            Execute(statement);
    } catch (...) {
        m_watch.reset();
        m_database = {};
        QSqlDatabase::removeDatabase(m_connection);
        throw;
    }
}

Database::~Database()
{
    m_watch.reset();
    m_database.close();
    m_database = {};
    QSqlDatabase::removeDatabase(m_connection);
}

CString Database::Name() const
{
    return m_engine->Name();
}

void Database::Run(QSqlQuery& query, const CString& sql, const QVariantList& values) const
{
    query.setForwardOnly(m_engine->ReadsRowByRow());
    // As it is: a server prepares no definitions, and a question mark without values is no mark.
    if (values.isEmpty()) {
        if (!query.exec(sql)) m_engine->Raise(query.lastError());
        return;
    }
    if (!query.prepare(sql)) m_engine->Raise(query.lastError());
    for (const QVariant& value : values)
        query.addBindValue(value);
    if (!query.exec()) m_engine->Raise(query.lastError());
}

void Database::Execute(const CString& sql, const QVariantList& values)
{
    const SilenceWatch::Wait wait(m_watch.get());
    QSqlQuery query(m_database);
    Run(query, sql, values);
}

void Database::ExecuteScript(const CString& script)
{
    for (const CString& statement : script.split(u';')) {
        if (!statement.trimmed().isEmpty()) Execute(statement);
    }
}

void Database::ExecuteWholeStatements(const CString& script)
{
    static const QRegularExpression separator(u"^;\\s*$"_s, QRegularExpression::MultilineOption);
    for (const CString& statement : script.split(separator)) {
        if (!statement.trimmed().isEmpty()) Execute(statement);
    }
}

void Database::Insert(const CString& table, const CStringArray& columns, const QList<CStringArray>& rows)
{
    const qsizetype atOnce = m_engine->RowsPerInsertion();
    const qsizetype whole = rows.size() / atOnce * atOnce;
    InsertSome(table, columns, rows.first(whole));
    if (whole < rows.size()) InsertSome(table, columns, rows.sliced(whole));
}

/// Inserts as many rows at once as the engine takes, or all where there are fewer.
void Database::InsertSome(const CString& table, const CStringArray& columns, const QList<CStringArray>& rows)
{
    if (rows.isEmpty()) return;
    const qsizetype atOnce = std::min(rows.size(), m_engine->RowsPerInsertion());
    const CString row = u'(' + CStringArray(columns.size(), u"?"_s).join(u',') + u')';
    const SilenceWatch::Wait wait(m_watch.get());
    QSqlQuery query(m_database);
    if (!query.prepare(u"INSERT INTO %1 (%2) VALUES %3"_s.arg(table, columns.join(u','),
                                                              CStringArray(atOnce, row).join(u',')))) {
        m_engine->Raise(query.lastError());
    }
    int place = 0;
    for (const CStringArray& texts : rows) {
        // A null text would become SQL's NULL, which is no text.
        for (qsizetype column = 0; column < columns.size(); ++column)
            query.bindValue(place++, texts.at(column).isNull() ? u""_s : texts.at(column));
        if (place < atOnce * columns.size()) continue;
        if (!query.exec()) m_engine->Raise(query.lastError());
        place = 0;
    }
}

void Database::ReplaceRows(const TablePart& part, const QList<CStringArray>& rows,
                           const std::function<void()>& step)
{
    m_engine->ReplaceRows(*this, part, rows, step);
}

void Database::ForEach(const CString& sql, const QVariantList& values,
                       const std::function<void(const QSqlQuery&)>& row)
{
    const SilenceWatch::Wait wait(m_watch.get());
    QSqlQuery query(m_database);
    Run(query, sql, values);
    while (query.next())
        row(query);
    if (query.lastError().isValid()) m_engine->Raise(query.lastError());
}

QVariant Database::Single(const CString& sql, const QVariantList& values)
{
    QVariant result;
    ForEach(sql, values, [&](const QSqlQuery& row) { result = row.value(0); });
    return result;
}

void Database::CreateTables(const CString& script)
{
    ExecuteScript(script);
    static const QRegularExpression creation(u"CREATE TABLE (\\w+) \\("_s);
    CStringArray tables;
    for (auto found = creation.globalMatch(script); found.hasNext();)
        tables.append(found.next().captured(1));
    m_engine->KeepInsertionOrder(*this, tables);
}

CString Database::InsertionOrder() const
{
    return m_engine->InsertionOrder();
}

int Database::SchemaVersion()
{
    return m_engine->SchemaVersion(*this);
}

void Database::SetSchemaVersion(int version)
{
    m_engine->SetSchemaVersion(*this, version);
}

bool Database::IsEmpty()
{
    return m_engine->IsEmpty(*this);
}

bool Database::HasTable(const CString& table)
{
    return m_engine->HasTable(*this, table);
}

CStringArray Database::ColumnsOf(const CString& table)
{
    const SilenceWatch::Wait wait(m_watch.get());
    QSqlQuery query(m_database);
    Run(query, u"SELECT * FROM %1 LIMIT 0"_s.arg(table), {});
    const QSqlRecord record = query.record();
    CStringArray columns;
    for (int field = 0; field < record.count(); ++field)
        if (record.fieldName(field) != InsertionOrder()) columns.append(record.fieldName(field));
    return columns;
}

void Database::Fail(const CString& reason) const
{
    throw Error(Name() + u"："_s + reason);
}

Transaction::Transaction(Database& database) : m_database(database)
{
    const CStringArray statements = database.m_engine->BeginWriting();
    m_database.Execute(statements.first());
    try {
        for (const CString& statement : statements.sliced(1))
            m_database.Execute(statement);
    } catch (...) {
        RollBack(m_database);
        throw;
    }
}

Transaction::~Transaction()
{
    if (m_open) RollBack(m_database);
}

void Transaction::KeepOthersFrom(const CStringArray& tables)
{
    m_database.m_engine->KeepOthersFrom(m_database, tables);
}

void Transaction::Commit()
{
    AskToWrite([this] { m_database.Execute(u"COMMIT"_s); });
    m_open = false;
}

Snapshot::Snapshot(Database& database) : m_database(database)
{
    m_database.Execute(database.m_engine->BeginReading());
}

Snapshot::~Snapshot()
{
    RollBack(m_database);
}

} // namespace embedded
