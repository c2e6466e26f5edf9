#include "embedded/data/office/OfficeSchema.h"

#include "embedded/data/catalogue/CatalogueSchema.h"
#include "embedded/data/engine/DataFile.h"
#include "embedded/data/engine/Error.h"
#include "embedded/data/engine/Schema.h"

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

void RunShipped(Database& database, const CString& script)
{
    database.ExecuteWholeStatements(CString::fromUtf8(ShippedFile(script)));
}

/// Whose the schema is, when it is there and belongs to somebody else, and `condition` holds; else empty.
CString OtherOwner(Database& database, const CString& condition = u"true"_s)
{
    return database
        .Single(u"SELECT nspowner::regrole::text FROM pg_namespace WHERE nspname = 'ktqdde' AND "
                "nspowner::regrole::text <> quote_ident(current_user) AND "_s +
                condition)
        .toString();
}

/// Raises `Error` when the schema is there already and belongs to somebody else, and `condition` holds.
void RefuseSchemaOfOthers(Database& database, const CString& condition = u"true"_s)
{
    const CString owner = OtherOwner(database, condition);
    if (!owner.isEmpty()) database.Fail(u"模式 ktqdde 已由用户“%1”建立，请先移走它"_s.arg(owner));
}

void Create(Database& database, const Progress& progress)
{
    // Whose it is may drop all that is in it, and what functions of the office would find there.
    RefuseSchemaOfOthers(database);
    database.Execute(u"CREATE SCHEMA IF NOT EXISTS ktqdde"_s);
    FillCatalogue(database, progress);
    EnsureGivenIds(database);
    // The rights concern its table, too.
    database.SetSchemaVersion(OfficeSchemaVersion);
    RunShipped(database, u"office.sql"_s);
    RunShipped(database, u"office-numbers.sql"_s);
    RunShipped(database, u"office-publishing.sql"_s);
    RunShipped(database, u"office-projects.sql"_s);
    for (const CString& table : CatalogueTables() + CStringArray{u"given_ids"_s})
        database.Execute(u"SELECT take_into_catalogue(?)"_s, {table});
    RunShipped(database, u"office-rights.sql"_s);
}

/// The roles are named after the database. One that was given another name since goes on, but nothing new can
/// be granted.
void RequireRoles(Database& database)
{
    // Who has a privilege in the schema, and a role's word at the end of his name.
    const CString renamed = u"WITH granted AS ("
                            "SELECT (aclexplode(relacl)).grantee FROM pg_class "
                            "WHERE relnamespace = 'ktqdde'::regnamespace UNION "
                            "SELECT (aclexplode(proacl)).grantee FROM pg_proc "
                            "WHERE pronamespace = 'ktqdde'::regnamespace) "
                            "SELECT string_agg(format('ALTER ROLE %I RENAME TO %I', former.rolname, "
                            "current_database() || '_' || word), '; ' ORDER BY word DESC) "
                            "FROM unnest(ARRAY['reader', 'editor', 'keeper']) AS word "
                            "JOIN pg_roles AS former ON former.oid IN (SELECT grantee FROM granted) AND "
                            "right(former.rolname, 7) = '_' || word "
                            "WHERE NOT EXISTS (SELECT FROM pg_roles AS present "
                            "WHERE present.rolname = current_database() || '_' || word)"_s;
    const CString remedy = database.Single(renamed).toString();
    if (!remedy.isEmpty())
        database.Fail(u"数据库改过名，而办公室的角色要以数据库的名称开头。"
                      "请有权限的用户先用 psql 给角色改名，再升级：%1"_s.arg(remedy));
}

[[noreturn]] void FailWithoutOffice(const Database& database)
{
    database.Fail(u"数据库中还没有办公室，请先用 ktqdde office create 建立"_s);
}

} // namespace

/// The catalogue's tables are the office's: when they change, so does the version of the office.
CArray<OfficeStep> KnownOfficeSteps()
{
    return {[](Database& database) {
        RunShipped(database, u"office-from-1.sql"_s);
        RunShipped(database, u"office-projects.sql"_s);
    }};
}

void CreateOfficeSchema(Database& database, const Progress& progress)
{
    bool isMine = false;
    const auto create = [&] {
        Create(database, progress);
        isMine = true;
    };
    const auto refuse = [&] { database.Fail(u"数据库中已有办公室，由旧版程序建立"_s); };
    // One that may not be looked into is no office: everybody sees the version of that.
    RefuseSchemaOfOthers(database, u"NOT has_schema_privilege(nspname, 'USAGE')"_s);
    try {
        EnsureSchema(database, OfficeSchemaVersion, create, refuse);
    } catch (const RightsError& error) {
        throw RightsError(error.Message() + u"。建立办公室的用户要有在数据库中建立模式的权限（CREATE）和"
                                            "建立角色的权限（CREATEROLE）"_s);
    }
    if (!isMine) database.Fail(u"数据库中已有办公室"_s);
}

int UpgradeOfficeSchema(Database& database, const CArray<OfficeStep>& steps)
{
    const int newest = static_cast<int>(steps.size()) + 1;
    int found = database.SchemaVersion();
    if (found == 0) FailWithoutOffice(database);
    const auto upgrade = [&] {
        found = database.SchemaVersion();
        // Functions that work with the rights of their owner would become somebody else's.
        const CString owner = OtherOwner(database);
        if (!owner.isEmpty())
            throw RightsError(u"%1：办公室由用户“%2”建立，请由这个用户升级"_s.arg(database.Name(), owner));
        RequireRoles(database);
        for (int version = found; version < newest; ++version)
            steps[version - 1](database);
        RunShipped(database, u"office-publishing.sql"_s);
        RunShipped(database, u"office-rights.sql"_s);
    };
    EnsureSchema(
        database, newest, [&] { FailWithoutOffice(database); }, upgrade);
    return found;
}

int UpgradeOfficeSchema(Database& database)
{
    return UpgradeOfficeSchema(database, KnownOfficeSteps());
}

void RequireOffice(Database& database)
{
    const int found = database.SchemaVersion();
    if (found == OfficeSchemaVersion) return;
    if (found == 0) FailWithoutOffice(database);
    if (found < OfficeSchemaVersion)
        database.Fail(u"由旧版程序建立（结构版本 %1），请用 ktqdde office upgrade 升级"_s.arg(found));
    RequireSchema(database, OfficeSchemaVersion);
}

} // namespace embedded
