#include "embedded/data/office/Office.h"

#include "embedded/data/engine/Error.h"
#include "embedded/data/engine/Service.h"
#include "embedded/data/office/OfficeSchema.h"

#include <chrono>

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

/// How long who creates or upgrades an office waits for another one who does.
constexpr std::chrono::minutes CreationPatience{2};

/// Asks the server what it lets the user do instead of which roles he has, so that the answer is true for
/// owners and administrators and after the database has got another name. Works without an office, too.
const CString RightQuestion =
    u"CASE WHEN has_function_privilege(to_regprocedure('ktqdde.set_removed(text, boolean)'), 'EXECUTE') THEN "
    u"3 "
    // In an office of whatever version.
    "WHEN EXISTS (SELECT FROM pg_proc WHERE pronamespace = to_regnamespace('ktqdde') AND "
    "proname = 'publish' AND has_function_privilege(oid, 'EXECUTE')) THEN 2 "
    "WHEN has_table_privilege(to_regclass('ktqdde.versions'), 'SELECT') THEN 1 ELSE 0 END"_s;

OfficeRight RightOf(Database& database)
{
    return static_cast<OfficeRight>(database.Single(u"SELECT "_s + RightQuestion).toInt());
}

CString UserOf(Database& database)
{
    return database.Single(u"SELECT session_user::text"_s).toString();
}

qint64 RevisionOf(Database& database)
{
    return database.Single(u"SELECT revision FROM office_state"_s).toLongLong();
}

/// Where the connection leads, as far as the service's entry and the server tell.
CString ServerOf(Database& database, const Service& service)
{
    CString place;
    const auto read = [&](const QSqlQuery& row) {
        const CString address = row.value(0).toString();
        const CString host = service.host.isEmpty() ? address : service.host;
        place = address.isEmpty() ? u"本机"_s : host + u':' + row.value(1).toString();
        place += u'/' + row.value(2).toString();
    };
    database.ForEach(u"SELECT host(inet_server_addr()), inet_server_port()::text, current_database()::text"_s,
                     {}, read);
    return place;
}

} // namespace

CString RightWord(OfficeRight right)
{
    switch (right) {
    case OfficeRight::None:
        return u"无"_s;
    case OfficeRight::Reader:
        return u"读者"_s;
    case OfficeRight::Editor:
        return u"编辑"_s;
    case OfficeRight::Keeper:
        return u"管理员"_s;
    }
    return {};
}

Office::Office(const CString& name) : m_name(name), m_database(ServiceOf(name)), m_first(AskFirst()) {}

/// All at once, for each question is a way to the server and back. Where that fails, what is wrong is asked
/// one by one.
OfficeAnswer Office::AskFirst()
{
    int schema = 0;
    OfficeAnswer first;
    try {
        m_database.ForEach(
            u"SELECT version, revision, %1 FROM schema_version, office_state"_s.arg(RightQuestion), {},
            [&](const QSqlQuery& row) {
                schema = row.value(0).toInt();
                first = {static_cast<OfficeRight>(row.value(2).toInt()), row.value(1).toLongLong()};
            });
    } catch (const UnreachableError&) {
        throw;
    } catch (const Error&) {
        RequireOffice(m_database);
        if (RightOf(m_database) != OfficeRight::None) throw;
    }
    if (schema != OfficeSchemaVersion) RequireOffice(m_database);
    if (first.right == OfficeRight::None) {
        throw RightsError(m_database.Name() +
                          u"：用户“%1”在办公室中没有角色，请向办公室的管理员申请"_s.arg(User()));
    }
    return first;
}

Office::~Office() = default;

void Office::Create(const CString& name, const Progress& progress)
{
    Database database(ServiceOf(name), CreationPatience);
    CreateOfficeSchema(database, progress);
}

int Office::Upgrade(const CString& name)
{
    Database database(ServiceOf(name), CreationPatience);
    return UpgradeOfficeSchema(database);
}

OfficeStatus Office::Status(const CString& name)
{
    const Service service = ServiceOf(name);
    Database database(service);
    OfficeStatus status;
    status.name = name;
    status.server = ServerOf(database, service);
    status.user = UserOf(database);
    status.isEncrypted =
        database.Single(u"SELECT ssl FROM pg_stat_ssl WHERE pid = pg_backend_pid()"_s).toBool();
    status.schema = database.SchemaVersion();
    status.knownSchema = SchemaVersion;
    status.right = RightOf(database);
    // What a newer program keeps elsewhere is not looked for.
    if (status.right == OfficeRight::None || status.schema > SchemaVersion) return status;
    const Snapshot snapshot(database);
    status.contents = {RevisionOf(database),
                       database.Single(u"SELECT count(*) FROM configurations WHERE NOT is_removed"_s).toInt(),
                       database.Single(u"SELECT count(*) FROM libraries"_s).toInt()};
    return status;
}

OfficeRight Office::Right()
{
    return RightOf(m_database);
}

CString Office::User()
{
    return UserOf(m_database);
}

qint64 Office::CatalogueRevision()
{
    return RevisionOf(m_database);
}

} // namespace embedded
