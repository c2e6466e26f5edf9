#include "embedded/OfficeDatabase.h"
#include "embedded/data/catalogue/CatalogueSchema.h"
#include "embedded/data/office/PublishedConfigurations.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using embedded::Office;
using embedded::PublishedConfigurations;
using test::TestOffice;

namespace {

const QString NotAllowed = u"42501"_s;

QString Quoted(const QString& name)
{
    return u'"' + QString(name).replace(u"\""_s, u"\"\""_s) + u'"';
}

/// All that stands in an office and who may do what with it, so that every change of anything shows.
const QString Fingerprint =
    u"SELECT name, md5(rows) FROM (SELECT relname AS name, query_to_xml(format("
    "'SELECT * FROM ktqdde.%I AS t ORDER BY t::text', relname), true, true, '')::text AS rows "
    "FROM pg_class WHERE relnamespace = 'ktqdde'::regnamespace AND relkind = 'r') AS tables "
    "UNION ALL SELECT 'class ' || relname, ROW(relacl, relowner, relhastriggers, relhasrules, "
    "relrowsecurity)::text "
    "FROM pg_class WHERE relnamespace = 'ktqdde'::regnamespace "
    "UNION ALL SELECT 'function ' || oid, ROW(md5(pg_get_functiondef(oid)), proacl, proowner)::text "
    "FROM pg_proc WHERE pronamespace = 'ktqdde'::regnamespace "
    "UNION ALL SELECT 'trigger ' || oid, ROW(tgrelid, tgname, tgenabled)::text FROM pg_trigger "
    "UNION ALL SELECT 'constraint ' || oid, pg_get_constraintdef(oid) FROM pg_constraint "
    "UNION ALL SELECT 'role ' || rolname, pg_roles::text FROM pg_roles "
    "UNION ALL SELECT 'member ' || roleid || ' ' || member, admin_option::text FROM pg_auth_members "
    "UNION ALL SELECT 'schema ' || nspname, ROW(nspacl, nspowner)::text FROM pg_namespace "
    "WHERE nspname NOT LIKE 'pg\\_%' ORDER BY 1"_s;

/// An office that holds something in every way.
class Rights : public ::testing::Test
{
protected:
    Rights()
    {
        Office keeper(TestOffice::Keeper());
        PublishedConfigurations(keeper).Publish(
            {u"甲"_s, {}, "<a/>", u"说明"_s, u"工程"_s, {}, {{u"Q"_s, u"030101001001"_s, u"泵"_s, u"台"_s}}});
        EXPECT_TRUE(
            office.Psql(TestOffice::Keeper(), u"UPDATE ktqdde.libraries SET local = '本地'"_s).isDone);
    }

    QStringList Lines(const QString& query) const
    {
        return office.Ask(query).split(u'\n', Qt::SkipEmptyParts);
    }

    /// The tables, as the server tells them.
    QStringList Tables() const
    {
        return Lines(u"SELECT relname FROM pg_class WHERE relnamespace = 'ktqdde'::regnamespace AND "
                     "relkind IN ('r', 'p', 'v', 'm', 'f') ORDER BY 1"_s);
    }
    /// A column that statements may name.
    QString ColumnOf(const QString& table) const
    {
        return office.Ask(u"SELECT attname FROM pg_attribute WHERE attrelid = 'ktqdde.%1'::regclass AND "
                          "attnum > 0 AND attidentity = '' AND NOT attisdropped LIMIT 1"_s.arg(table));
    }
    /// Statements that change the rows of a table.
    QStringList RowChanges(const QString& table) const
    {
        const QString column = ColumnOf(table);
        return {
            u"INSERT INTO ktqdde.%1 DEFAULT VALUES"_s.arg(table),
            u"INSERT INTO ktqdde.%1 OVERRIDING SYSTEM VALUE SELECT * FROM ktqdde.%1"_s.arg(table),
            u"UPDATE ktqdde.%1 SET %2 = %2"_s.arg(table, column), u"DELETE FROM ktqdde.%1"_s.arg(table),
            u"MERGE INTO ktqdde.%1 AS t USING ktqdde.%1 AS s ON false WHEN MATCHED THEN DELETE"_s.arg(table),
            u"COPY ktqdde.%1 FROM STDIN"_s.arg(table),
            // With more than the right to read; it comes with the one to write.
            u"DO 'BEGIN LOCK TABLE ktqdde.%1 IN ACCESS EXCLUSIVE MODE; END'"_s.arg(table),
            u"SELECT * FROM ktqdde.%1 FOR UPDATE"_s.arg(table)};
    }
    /// Statements that take away all rows or change what the table is.
    QStringList TableChanges(const QString& table) const
    {
        const QString column = ColumnOf(table);
        const QStringList forms{
            u"TRUNCATE ktqdde.%1 CASCADE"_s,
            u"DROP TABLE ktqdde.%1 CASCADE"_s,
            u"ALTER TABLE ktqdde.%1 RENAME TO other"_s,
            u"ALTER TABLE ktqdde.%1 ADD COLUMN more text"_s,
            u"ALTER TABLE ktqdde.%1 DROP COLUMN %2 CASCADE"_s,
            u"ALTER TABLE ktqdde.%1 DISABLE TRIGGER ALL"_s,
            u"ALTER TABLE ktqdde.%1 OWNER TO CURRENT_USER"_s,
            u"ALTER TABLE ktqdde.%1 ENABLE ROW LEVEL SECURITY"_s,
            u"CREATE TRIGGER mine BEFORE INSERT ON ktqdde.%1 FOR EACH ROW EXECUTE FUNCTION "
            "suppress_redundant_updates_trigger()"_s,
            u"CREATE RULE mine AS ON UPDATE TO ktqdde.%1 DO INSTEAD NOTHING"_s,
            u"CREATE INDEX ON ktqdde.%1 (%2)"_s};
        QStringList statements;
        for (const QString& form : forms)
            statements.append(form.contains(u"%2"_s) ? form.arg(table, column) : form.arg(table));
        return statements;
    }
    QStringList AllChanges() const
    {
        QStringList statements;
        for (const QString& table : Tables())
            statements += RowChanges(table) + TableChanges(table);
        return statements;
    }
    /// Statements that lead around the tables.
    QStringList Detours(const CString& service) const
    {
        const QString self = Quoted(office.User(service));
        const QString owner = Quoted(office.User(TestOffice::Administrator()));
        QStringList statements{u"SET SESSION AUTHORIZATION "_s + owner,
                               u"SET SESSION AUTHORIZATION "_s + test::PostgresServer::User(),
                               u"SET ROLE "_s + owner,
                               u"SET ROLE "_s + test::PostgresServer::User(),
                               u"SET session_replication_role = replica"_s,
                               u"ALTER ROLE %1 CREATEROLE"_s.arg(self),
                               u"ALTER ROLE %1 SUPERUSER"_s.arg(self),
                               u"CREATE ROLE friend"_s,
                               u"GRANT %1 TO %2"_s.arg(owner, self),
                               u"CREATE TABLE ktqdde.more (text text)"_s,
                               u"CREATE FUNCTION ktqdde.more() RETURNS integer LANGUAGE sql RETURN 1"_s,
                               u"CREATE SCHEMA more"_s,
                               u"DROP SCHEMA ktqdde CASCADE"_s,
                               u"ALTER SCHEMA ktqdde RENAME TO other"_s,
                               u"DROP DATABASE %1"_s.arg(office.Name()),
                               u"ALTER DATABASE %1 RENAME TO other"_s.arg(office.Name()),
                               u"ALTER DATABASE %1 SET search_path = pg_temp"_s.arg(office.Name()),
                               u"COPY ktqdde.versions FROM PROGRAM 'true'"_s,
                               u"COPY ktqdde.versions TO PROGRAM 'true'"_s,
                               u"REASSIGN OWNED BY %1 TO %2"_s.arg(owner, self)};
        for (const QString& sequence :
             Lines(u"SELECT sequencename FROM pg_sequences WHERE schemaname = 'ktqdde'"_s)) {
            statements.append(u"SELECT setval('ktqdde.%1', 1)"_s.arg(sequence));
            statements.append(u"SELECT nextval('ktqdde.%1')"_s.arg(sequence));
        }
        return statements;
    }
    QStringList RolesAbove(const CString& service) const
    {
        QStringList statements;
        for (const QString& role : {u"reader"_s, u"editor"_s, u"keeper"_s}) {
            const QString name = Quoted(office.Name() + u'_' + role);
            const QString isMember = office.Ask(u"SELECT pg_has_role('%1', '%2_%3', 'MEMBER')"_s.arg(
                office.User(service), office.Name(), role));
            if (isMember == u"f") statements.append(u"SET ROLE "_s + name);
            statements.append(u"GRANT %1 TO %2"_s.arg(name, Quoted(office.User(service))));
            statements.append(u"DROP ROLE "_s + name);
        }
        return statements;
    }
    /// Calls, redefinitions and removals of all functions except for calls of those in `granted`.
    QStringList FunctionUses(const QStringList& granted) const
    {
        QStringList statements;
        for (const QString& line :
             Lines(u"SELECT proname || '|' || array_to_string(ARRAY(SELECT 'NULL::' || format_type(t, NULL) "
                   "FROM unnest(proargtypes) AS t), ', ') || '|' || pg_get_function_identity_arguments(oid) "
                   "FROM pg_proc WHERE pronamespace = 'ktqdde'::regnamespace ORDER BY 1"_s)) {
            const QStringList parts = line.split(u'|');
            if (!granted.contains(parts[0]))
                statements.append(u"SELECT ktqdde.%1(%2)"_s.arg(parts[0], parts[1]));
            statements.append(u"DROP FUNCTION ktqdde.%1(%2) CASCADE"_s.arg(parts[0], parts[2]));
            statements.append(u"ALTER FUNCTION ktqdde.%1(%2) SECURITY INVOKER"_s.arg(parts[0], parts[2]));
        }
        return statements;
    }
    void ExpectRefused(const CString& service, const QStringList& statements)
    {
        ASSERT_FALSE(statements.isEmpty());
        const QString before = office.Ask(Fingerprint);
        const QStringList states =
            test::SharedServer().PsqlEach(office.Name(), office.User(service), statements);
        for (qsizetype i = 0; i < statements.size(); ++i) {
            EXPECT_EQ(states[i].toStdString(), NotAllowed.toStdString())
                << service.toStdString() << ": " << statements[i].toStdString();
        }
        EXPECT_EQ(office.Ask(Fingerprint).toStdString(), before.toStdString());
    }

    TestOffice office;
};

/// What editors call.
const QStringList EditorFunctions{u"publish"_s, u"claim_numbers"_s, u"keep_number"_s, u"release_claims"_s,
                                  u"note_project"_s};

} // namespace

TEST_F(Rights, TablesOfAnOfficeAreReadFromTheServer)
{
    const QStringList tables = Tables();
    for (const CString& table :
         embedded::CatalogueTables() + CStringArray{u"versions"_s, u"changes"_s, u"numbers"_s,
                                                    u"configurations"_s, u"office_state"_s,
                                                    u"schema_version"_s, u"given_ids"_s})
        EXPECT_TRUE(tables.contains(table)) << table.toStdString();
}

TEST_F(Rights, ReaderReadsEverything)
{
    QStringList statements;
    for (const QString& table : Tables())
        statements.append(u"SELECT * FROM ktqdde."_s + table);
    EXPECT_EQ(test::SharedServer().PsqlEach(office.Name(), office.User(TestOffice::Reader()), statements),
              QStringList(statements.size(), u"00000"_s));
}

TEST_F(Rights, ReaderIsRefusedEveryChangeOfEveryTable)
{
    ExpectRefused(TestOffice::Reader(), AllChanges());
}

TEST_F(Rights, ReaderIsRefusedEveryFunction)
{
    ExpectRefused(TestOffice::Reader(), FunctionUses({}));
    ExpectRefused(TestOffice::Reader(),
                  {u"SELECT ktqdde.publish('甲', 1, sha256('<a/>'), 'x', sha256('x'), '', '', '', '[]')"_s,
                   u"SELECT ktqdde.set_removed('甲', true)"_s,
                   u"SELECT ktqdde.allow('reader', 'INSERT ON versions')"_s});
}

TEST_F(Rights, ReaderFindsNoDetour)
{
    ExpectRefused(TestOffice::Reader(), Detours(TestOffice::Reader()) + RolesAbove(TestOffice::Reader()));
}

TEST_F(Rights, EditorIsRefusedEveryChangeOfEveryTable)
{
    ExpectRefused(TestOffice::Editor(), AllChanges());
}

TEST_F(Rights, EditorIsRefusedEveryFunctionButThoseForPublishing)
{
    ExpectRefused(TestOffice::Editor(), FunctionUses(EditorFunctions));
}

TEST_F(Rights, EditorFindsNoDetour)
{
    ExpectRefused(TestOffice::Editor(), Detours(TestOffice::Editor()) + RolesAbove(TestOffice::Editor()));
}

TEST_F(Rights, KeeperChangesRowsOfTheCatalogueAndNothingElse)
{
    const CStringArray catalogue = embedded::CatalogueTables() + CStringArray{u"given_ids"_s};
    QStringList refused =
        FunctionUses(EditorFunctions + CStringArray{u"set_removed"_s, u"forget_project"_s}) +
        Detours(TestOffice::Keeper()) + RolesAbove(TestOffice::Keeper());
    for (const QString& table : Tables())
        refused += TableChanges(table) + (catalogue.contains(table) ? QStringList() : RowChanges(table));
    ExpectRefused(TestOffice::Keeper(), refused);
    const test::PsqlAnswer answer =
        office.Psql(TestOffice::Keeper(), u"SET search_path = ktqdde; "
                                          "INSERT INTO cell_data VALUES ('新', 1, '甲|乙'); "
                                          "UPDATE cell_data SET kind = 2 WHERE code = '新'; "
                                          "SELECT kind FROM cell_data WHERE code = '新'; "
                                          "DELETE FROM cell_data WHERE code = '新'"_s);
    EXPECT_EQ(answer.rows, u"2\n"_s) << answer.fault.toStdString();
}

TEST_F(Rights, StrangerSeesNothingButTheVersionOfTheSchema)
{
    QStringList statements;
    for (const QString& table : Tables()) {
        if (table != u"schema_version") statements.append(u"SELECT * FROM ktqdde."_s + table);
    }
    ExpectRefused(TestOffice::Stranger(), statements + AllChanges() + FunctionUses({}) +
                                              Detours(TestOffice::Stranger()) +
                                              RolesAbove(TestOffice::Stranger()));
}

TEST_F(Rights, AuthorIsTheUserWhoHasConnectedWhateverHeSays)
{
    const QString publish =
        u"SELECT ktqdde.publish('甲', 1, sha256('<a/>'), 'x', sha256('x'), '', '', '', '[]')"_s;
    const test::PsqlAnswer answer = office.Psql(
        TestOffice::Editor(), u"SET ROLE \"%1_editor\"; SET application_name = 'boss'; "
                              "SET search_path = pg_temp, ktqdde; %2"_s.arg(office.Name(), publish));
    ASSERT_TRUE(answer.isDone) << answer.fault.toStdString();
    EXPECT_EQ(office.Ask(u"SELECT author FROM ktqdde.versions WHERE number = 2"_s),
              office.User(TestOffice::Editor()));
}

TEST_F(Rights, TemporaryTablesDoNotDivertAPublication)
{
    const test::PsqlAnswer answer = office.Psql(
        TestOffice::Editor(),
        u"SET search_path = pg_temp, ktqdde, pg_catalog; "
        "CREATE TEMPORARY TABLE versions (LIKE ktqdde.versions); "
        "CREATE TEMPORARY TABLE configurations (LIKE ktqdde.configurations); "
        "CREATE FUNCTION pg_temp.sha256(bytea) RETURNS bytea LANGUAGE sql AS 'SELECT ''''::bytea'; "
        "SELECT ending, version FROM ktqdde.publish('甲', 1, pg_catalog.sha256('<a/>'), 'x', "
        "pg_catalog.sha256('x'), '', '', '', '[]'); "
        "SELECT count(*) FROM pg_temp.versions"_s);
    EXPECT_EQ(answer.rows, u"published|2\n0\n"_s) << answer.fault.toStdString();
    EXPECT_EQ(office.Ask(u"SELECT count(*) FROM ktqdde.versions"_s), u"2"_s);
}

TEST_F(Rights, VersionsAndChangesStayAsTheyAreEvenForTheOwner)
{
    const QString before = office.Ask(Fingerprint);
    const QStringList statements{u"UPDATE ktqdde.versions SET note = ''"_s,
                                 u"DELETE FROM ktqdde.versions"_s,
                                 u"TRUNCATE ktqdde.versions"_s,
                                 u"UPDATE ktqdde.changes SET who = 'x'"_s,
                                 u"DELETE FROM ktqdde.changes"_s,
                                 u"TRUNCATE ktqdde.changes"_s};
    EXPECT_EQ(
        test::SharedServer().PsqlEach(office.Name(), office.User(TestOffice::Administrator()), statements),
        QStringList(statements.size(), u"P0001"_s));
    EXPECT_EQ(office.Ask(Fingerprint).toStdString(), before.toStdString());
}
