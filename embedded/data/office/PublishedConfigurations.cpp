#include "embedded/data/office/PublishedConfigurations.h"

#include "embedded/data/engine/Error.h"
#include "embedded/data/project/CurrentConfiguration.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <utility>

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

const CString VersionColumns =
    u"configuration, number, base, (extract(epoch FROM at) * 1000)::bigint, author, project, note, "
    "octet_length(content), is_removed, digest"_s;
const CString Versions =
    u"SELECT %1 FROM versions JOIN configurations ON configuration = name "_s.arg(VersionColumns);

PublishedVersion VersionOf(const QSqlQuery& row)
{
    PublishedVersion version;
    version.configuration = row.value(0).toString();
    version.number = row.value(1).toInt();
    version.base = row.value(2).toInt();
    version.at = QDateTime::fromMSecsSinceEpoch(row.value(3).toLongLong(), Qt::UTC);
    version.author = row.value(4).toString();
    version.project = row.value(5).toString();
    version.note = row.value(6).toString();
    version.size = row.value(7).toLongLong();
    version.isRemoved = row.value(8).toBool();
    version.digest = row.value(9).toByteArray();
    return version;
}

CArray<PublishedVersion> VersionsOf(Database& database, const CString& query, const QVariantList& values)
{
    CArray<PublishedVersion> versions;
    database.ForEach(query, values, [&](const QSqlQuery& row) { versions.append(VersionOf(row)); });
    return versions;
}

CString ToJson(const CArray<NumberUse>& numbers)
{
    QJsonArray array;
    for (const NumberUse& use : numbers) {
        array.append(QJsonObject{{u"library"_s, use.library},
                                 {u"number"_s, use.number},
                                 {u"name"_s, use.name},
                                 {u"unit"_s, use.unit}});
    }
    return CString::fromUtf8(QJsonDocument(array).toJson(QJsonDocument::Compact));
}

CArray<NumberCollision> CollisionsOf(const CString& json)
{
    CArray<NumberCollision> collisions;
    const QJsonArray array = QJsonDocument::fromJson(json.toUtf8()).array();
    for (const auto& value : array) {
        const QJsonObject object = value.toObject();
        const auto text = [&](const CString& key) { return object.value(key).toString(); };
        const NumberUse mine{text(u"library"_s), text(u"number"_s), text(u"name"_s), text(u"unit"_s)};
        const NumberUse theirs{mine.library, mine.number, text(u"their_name"_s), text(u"their_unit"_s)};
        collisions.append({mine, theirs, text(u"project"_s)});
    }
    return collisions;
}

PublishOutcome::End EndOf(const CString& word)
{
    if (word == u"published") return PublishOutcome::Published;
    if (word == u"unchanged") return PublishOutcome::Unchanged;
    if (word == u"newer") return PublishOutcome::Newer;
    if (word == u"collides") return PublishOutcome::Collides;
    return PublishOutcome::Missing;
}

/// A text as the server takes it: one that is null would become SQL's NULL, and one character it has none
/// for.
CString Text(CString text)
{
    return text.isNull() ? u""_s : text.remove(QChar::Null);
}

} // namespace

QByteArray DigestOf(const QByteArray& content)
{
    return QCryptographicHash::hash(content, QCryptographicHash::Sha256);
}

CArray<PublishedVersion> PublishedConfigurations::Latest(bool withRemoved)
{
    return VersionsOf(m_office.Connection(),
                      Versions +
                          u"WHERE (? OR NOT is_removed) AND number = (SELECT max(number) FROM versions "
                          "WHERE configuration = name) ORDER BY name"_s,
                      {withRemoved});
}

std::optional<PublishedVersion> PublishedConfigurations::Last(const CString& configuration)
{
    const auto versions = VersionsOf(
        m_office.Connection(), Versions + u"WHERE name = ? ORDER BY number DESC LIMIT 1"_s, {configuration});
    if (versions.isEmpty()) return std::nullopt;
    return versions.first();
}

CArray<PublishedVersion> PublishedConfigurations::Log(const CString& configuration)
{
    return VersionsOf(m_office.Connection(), Versions + u"WHERE name = ? ORDER BY number DESC"_s,
                      {configuration});
}

std::optional<QByteArray> PublishedConfigurations::Content(const CString& configuration, int version)
{
    std::optional<QByteArray> content;
    QByteArray digest;
    m_office.Connection().ForEach(
        u"SELECT content, digest FROM versions WHERE configuration = ? AND number = ?"_s,
        {configuration, version}, [&](const QSqlQuery& row) {
            content = row.value(0).toByteArray();
            digest = row.value(1).toByteArray();
        });
    if (content && DigestOf(*content) != digest) {
        m_office.Connection().Fail(
            u"配置“%1”的版本 %2 已损坏：内容与它的摘要不符"_s.arg(configuration).arg(version));
    }
    return content;
}

PublishOutcome PublishedConfigurations::Publish(const Publication& publication)
{
    Database& database = m_office.Connection();
    if (!CurrentConfiguration::IsPossibleName(publication.configuration))
        database.Fail(u"“%1”不能用作配置名"_s.arg(publication.configuration));
    if (publication.content.isEmpty()) database.Fail(u"配置“%1”是空的"_s.arg(publication.configuration));
    if (publication.content.size() > LargestContent) {
        database.Fail(u"配置“%1”太大：最多 %2 MB"_s.arg(publication.configuration).arg(LargestContent >> 20));
    }
    PublishOutcome outcome;
    AskToWrite([&] {
        database.ForEach(u"SELECT ending, version, collisions FROM publish(?, ?, ?, ?, ?, ?, ?, ?, ?)"_s,
                         {publication.configuration, publication.base.number, publication.base.digest,
                          publication.content, DigestOf(publication.content), Text(publication.note),
                          Text(publication.project), Text(publication.projectId),
                          ToJson(publication.numbers)},
                         [&](const QSqlQuery& row) {
                             outcome.end = EndOf(row.value(0).toString());
                             outcome.version = row.value(1).toInt();
                             outcome.collisions = CollisionsOf(row.value(2).toString());
                         });
    });
    return outcome;
}

void PublishedConfigurations::Remove(const CString& configuration)
{
    SetRemoved(configuration, true);
}

void PublishedConfigurations::BringBack(const CString& configuration)
{
    SetRemoved(configuration, false);
}

void PublishedConfigurations::SetRemoved(const CString& configuration, bool removed)
{
    Database& database = m_office.Connection();
    bool isThere = false;
    AskToWrite([&] {
        isThere = database.Single(u"SELECT set_removed(?, ?)"_s, {configuration, removed}).toBool();
    });
    if (!isThere) database.Fail(u"没有名为“%1”的配置"_s.arg(configuration));
}

} // namespace embedded
