#include "embedded/data/office/OfficeMemory.h"

#include "embedded/data/engine/DataFile.h"
#include "embedded/data/engine/Schema.h"

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

constexpr int SchemaVersion = 2;

CString TimeText(const QDateTime& at)
{
    return at.toUTC().toString(Qt::ISODateWithMs);
}

QDateTime TimeOf(const QVariant& text)
{
    return QDateTime::fromString(text.toString(), Qt::ISODateWithMs);
}

/// A null text would become SQL's NULL, and so would null bytes.
QVariant Value(const CString& text)
{
    return text.isNull() ? u""_s : text;
}

QVariant Value(const QByteArray& bytes)
{
    return bytes.isNull() ? QByteArray("") : bytes;
}

void ForgetWaiting(Database& database, const CString& column, const QVariant& value)
{
    database.Execute(
        u"DELETE FROM waiting_numbers WHERE waiting IN (SELECT id FROM waiting WHERE %1 = ?)"_s.arg(column),
        {value});
    database.Execute(u"DELETE FROM waiting WHERE %1 = ?"_s.arg(column), {value});
}

} // namespace

OfficeMemory::OfficeMemory(const CString& path) : m_database(path)
{
    EnsureSchema(
        m_database, SchemaVersion,
        [this] { m_database.CreateTables(CString::fromUtf8(ShippedFile(u"office-memory.sql"_s))); },
        [this] { m_database.ExecuteScript(CString::fromUtf8(ShippedFile(u"office-memory-from-1.sql"_s))); });
}

std::optional<OfficeMemory::Seen> OfficeMemory::LastSeen()
{
    std::optional<Seen> seen;
    m_database.ForEach(u"SELECT revision, at FROM seen"_s, {}, [&](const QSqlQuery& row) {
        seen = {row.value(0).toLongLong(), TimeOf(row.value(1))};
    });
    return seen;
}

void OfficeMemory::RememberSeen(qint64 revision, const QDateTime& at)
{
    Transaction transaction(m_database);
    m_database.Execute(u"DELETE FROM seen"_s);
    m_database.Execute(u"INSERT INTO seen (revision, at) VALUES (?, ?)"_s, {revision, TimeText(at)});
    transaction.Commit();
}

VersionMark OfficeMemory::Base(const CString& configuration)
{
    VersionMark base;
    m_database.ForEach(u"SELECT version, digest FROM bases WHERE configuration = ?"_s, {configuration},
                       [&](const QSqlQuery& row) {
                           base = {row.value(0).toInt(), row.value(1).toByteArray()};
                       });
    return base;
}

void OfficeMemory::RememberBase(const CString& configuration, const VersionMark& version)
{
    Transaction transaction(m_database);
    m_database.Execute(
        u"INSERT INTO bases (configuration, version, digest) VALUES (?, ?, ?) "
        "ON CONFLICT (configuration) DO UPDATE SET version = excluded.version, digest = excluded.digest"_s,
        {configuration, version.number, Value(version.digest)});
    m_database.Execute(u"DELETE FROM sent WHERE configuration = ?"_s, {configuration});
    transaction.Commit();
}

CArray<QByteArray> OfficeMemory::Sent(const CString& configuration)
{
    CArray<QByteArray> digests;
    m_database.ForEach(u"SELECT digest FROM sent WHERE configuration = ?"_s, {configuration},
                       [&](const QSqlQuery& row) { digests.append(row.value(0).toByteArray()); });
    return digests;
}

void OfficeMemory::RememberSent(const CString& configuration, const QByteArray& digest)
{
    Transaction transaction(m_database);
    m_database.Execute(u"INSERT INTO sent (configuration, digest) VALUES (?, ?) ON CONFLICT DO NOTHING"_s,
                       {configuration, digest});
    transaction.Commit();
}

void OfficeMemory::ForgetSent(const CString& configuration, const QByteArray& digest)
{
    Transaction transaction(m_database);
    m_database.Execute(u"DELETE FROM sent WHERE configuration = ? AND digest = ?"_s, {configuration, digest});
    transaction.Commit();
}

CArray<WaitingPublication> OfficeMemory::Waiting()
{
    const Snapshot snapshot(m_database);
    CArray<WaitingPublication> all;
    QHash<qint64, qsizetype> placeOf;
    m_database.ForEach(
        u"SELECT id, since, configuration, base, base_digest, content, note, project, project_id "
        "FROM waiting ORDER BY id"_s,
        {}, [&](const QSqlQuery& row) {
            WaitingPublication waiting;
            waiting.id = row.value(0).toLongLong();
            waiting.since = TimeOf(row.value(1));
            waiting.publication = {row.value(2).toString(),
                                   {row.value(3).toInt(), row.value(4).toByteArray()},
                                   row.value(5).toByteArray(),
                                   row.value(6).toString(),
                                   row.value(7).toString(),
                                   row.value(8).toString(),
                                   {}};
            placeOf.insert(waiting.id, all.size());
            all.append(std::move(waiting));
        });
    m_database.ForEach(u"SELECT waiting, library, number, name, unit FROM waiting_numbers ORDER BY rowid"_s,
                       {}, [&](const QSqlQuery& row) {
                           const qsizetype place = placeOf.value(row.value(0).toLongLong(), -1);
                           if (place < 0) return;
                           all[place].publication.numbers.append(
                               {row.value(1).toString(), row.value(2).toString(), row.value(3).toString(),
                                row.value(4).toString()});
                       });
    return all;
}

void OfficeMemory::Wait(const Publication& publication)
{
    Transaction transaction(m_database);
    ForgetWaiting(m_database, u"configuration"_s, publication.configuration);
    m_database.Execute(
        u"INSERT INTO waiting (since, configuration, base, base_digest, content, note, project, project_id) "
        "VALUES (?, ?, ?, ?, ?, ?, ?, ?)"_s,
        {TimeText(QDateTime::currentDateTimeUtc()), publication.configuration, publication.base.number,
         Value(publication.base.digest), Value(publication.content), Value(publication.note),
         Value(publication.project), Value(publication.projectId)});
    const CString id = m_database.Single(u"SELECT last_insert_rowid()"_s).toString();
    QList<CStringArray> rows;
    for (const NumberUse& use : publication.numbers)
        rows.append({id, use.library, use.number, use.name, use.unit});
    m_database.Insert(u"waiting_numbers"_s, {u"waiting"_s, u"library"_s, u"number"_s, u"name"_s, u"unit"_s},
                      rows);
    transaction.Commit();
}

void OfficeMemory::Forget(const WaitingPublication& waiting)
{
    Transaction transaction(m_database);
    ForgetWaiting(m_database, u"id"_s, waiting.id);
    transaction.Commit();
}

} // namespace embedded
