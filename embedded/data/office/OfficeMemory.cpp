#include "embedded/data/office/OfficeMemory.h"

#include "embedded/data/engine/DataFile.h"
#include "embedded/data/engine/Error.h"
#include "embedded/data/engine/Schema.h"

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

constexpr int SchemaVersion = 2;
constexpr int FormerSchema = 1;
/// In place of a column that the former schema has not.
const CString NoBytes = u"x''"_s;

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

/// What waits of a publication, in the order of the columns.
QVariantList Contents(const Publication& publication)
{
    return {publication.base.number, Value(publication.base.digest), Value(publication.content),
            Value(publication.note), Value(publication.project),     Value(publication.projectId)};
}

void InsertNumbers(Database& database, const CString& waiting, const Publication& publication)
{
    QList<CStringArray> rows;
    for (const NumberUse& use : publication.numbers)
        rows.append({waiting, use.library, use.number, use.name, use.unit});
    database.Insert(u"waiting_numbers"_s, {u"waiting"_s, u"library"_s, u"number"_s, u"name"_s, u"unit"_s},
                    rows);
}

} // namespace

OfficeMemory::OfficeMemory(const CString& path) : m_database(path)
{
    try {
        EnsureWritten();
    } catch (const ReadOnlyError&) {
        if (m_database.SchemaVersion() != FormerSchema) throw;
    }
}

/// Makes what is missing, and brings what an older program has made to the schema of this one.
void OfficeMemory::EnsureWritten()
{
    EnsureSchema(
        m_database, SchemaVersion,
        [this] { m_database.CreateTables(CString::fromUtf8(ShippedFile(u"office-memory.sql"_s))); },
        [this] { m_database.ExecuteScript(CString::fromUtf8(ShippedFile(u"office-memory-from-1.sql"_s))); });
}

/// Whether the file is what an older program has made of it, who knew versions by their numbers alone.
/// Another program may bring it up to date at any time.
bool OfficeMemory::IsFormer()
{
    return m_database.SchemaVersion() == FormerSchema;
}

void OfficeMemory::Write(const std::function<void()>& statements)
{
    if (IsFormer()) EnsureWritten();
    Transaction transaction(m_database);
    statements();
    transaction.Commit();
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
    Write([&] {
        m_database.Execute(u"DELETE FROM seen"_s);
        m_database.Execute(u"INSERT INTO seen (revision, at) VALUES (?, ?)"_s, {revision, TimeText(at)});
    });
}

VersionMark OfficeMemory::Base(const CString& configuration)
{
    VersionMark base;
    const CString digest = IsFormer() ? NoBytes : u"digest"_s;
    m_database.ForEach(u"SELECT version, %1 FROM bases WHERE configuration = ?"_s.arg(digest),
                       {configuration}, [&](const QSqlQuery& row) {
                           base = {row.value(0).toInt(), row.value(1).toByteArray()};
                       });
    return base;
}

void OfficeMemory::RememberBase(const CString& configuration, const VersionMark& version)
{
    Write([&] {
        m_database.Execute(
            u"INSERT INTO bases (configuration, version, digest) VALUES (?, ?, ?) "
            "ON CONFLICT (configuration) DO UPDATE SET version = excluded.version, digest = excluded.digest"_s,
            {configuration, version.number, Value(version.digest)});
        m_database.Execute(u"DELETE FROM sent WHERE configuration = ?"_s, {configuration});
    });
}

CArray<QByteArray> OfficeMemory::Sent(const CString& configuration)
{
    CArray<QByteArray> digests;
    if (IsFormer()) return digests;
    m_database.ForEach(u"SELECT digest FROM sent WHERE configuration = ?"_s, {configuration},
                       [&](const QSqlQuery& row) { digests.append(row.value(0).toByteArray()); });
    return digests;
}

void OfficeMemory::RememberSent(const CString& configuration, const QByteArray& digest)
{
    Write([&] {
        m_database.Execute(u"INSERT INTO sent (configuration, digest) VALUES (?, ?) ON CONFLICT DO NOTHING"_s,
                           {configuration, digest});
    });
}

void OfficeMemory::ForgetSent(const CString& configuration, const QByteArray& digest)
{
    Write([&] {
        m_database.Execute(u"DELETE FROM sent WHERE configuration = ? AND digest = ?"_s,
                           {configuration, digest});
    });
}

CArray<WaitingPublication> OfficeMemory::Waiting()
{
    const Snapshot snapshot(m_database);
    const bool isFormer = IsFormer();
    CArray<WaitingPublication> all;
    QHash<qint64, qsizetype> placeOf;
    m_database.ForEach(
        u"SELECT id, since, configuration, base, %1, content, note, project, %2 FROM waiting ORDER BY id"_s
            .arg(isFormer ? NoBytes : u"base_digest"_s, isFormer ? u"''"_s : u"project_id"_s),
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
    Write([&] {
        ForgetWaiting(m_database, u"configuration"_s, publication.configuration);
        m_database.Execute(
            u"INSERT INTO waiting (since, configuration, base, base_digest, content, note, project, "
            "project_id) VALUES (?, ?, ?, ?, ?, ?, ?, ?)"_s,
            QVariantList{TimeText(QDateTime::currentDateTimeUtc()), publication.configuration} +
                Contents(publication));
        InsertNumbers(m_database, m_database.Single(u"SELECT last_insert_rowid()"_s).toString(), publication);
    });
}

void OfficeMemory::Renew(const WaitingPublication& waiting, const Publication& publication)
{
    Write([&] {
        if (m_database.Single(u"SELECT count(*) FROM waiting WHERE id = ?"_s, {waiting.id}).toInt() == 0)
            return;
        m_database.Execute(
            u"UPDATE waiting SET base = ?, base_digest = ?, content = ?, note = ?, project = ?, "
            "project_id = ? WHERE id = ?"_s,
            Contents(publication) + QVariantList{waiting.id});
        m_database.Execute(u"DELETE FROM waiting_numbers WHERE waiting = ?"_s, {waiting.id});
        InsertNumbers(m_database, CString::number(waiting.id), publication);
    });
}

void OfficeMemory::Forget(const WaitingPublication& waiting)
{
    Write([&] { ForgetWaiting(m_database, u"id"_s, waiting.id); });
}

} // namespace embedded
