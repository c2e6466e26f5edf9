#include "embedded/data/office/Office.h"
#include "embedded/OfficeDatabase.h"
#include "embedded/TestProject.h"
#include "embedded/data/catalogue/CatalogueSchema.h"
#include "embedded/data/engine/DataFile.h"
#include "embedded/data/engine/Service.h"
#include "embedded/data/office/OfficeSchema.h"
#include "embedded/data/office/PublishedConfigurations.h"
#include "support/SourceTree.h"

#include <QtCore/QFile>

#include <gtest/gtest.h>

#include <thread>

using namespace Qt::StringLiterals;
using embedded::Database;
using embedded::Office;
using embedded::OfficeRight;
using embedded::OfficeStatus;
using test::ErrorOf;
using test::OfficeDatabase;
using test::TestOffice;

namespace {

CString Administrator()
{
    return OfficeDatabase::Administrator();
}

/// Everything of a database that a failed creation could leave.
QString Traces(const OfficeDatabase& database)
{
    return database.Ask(u"SELECT nspname FROM pg_namespace WHERE nspname = 'ktqdde' UNION ALL "
                        "SELECT rolname FROM pg_roles WHERE rolname LIKE '%1\\_%'"_s.arg(database.Name()));
}

/// The servers' address on this machine, in a form that is not taken for one.
CString NotKnownAsLocal()
{
    quint32 number = 0;
    for (const CString& part : test::PostgresServer::Address().split(u'.'))
        number = number << 8 | part.toUInt();
    return CString::number(number);
}

} // namespace

TEST(OfficeCreation, FillsTheCatalogueWithWhatIsShipped)
{
    const TestOffice office;
    for (const CString& table : embedded::CatalogueTables()) {
        EXPECT_EQ(office.Ask(u"SELECT count(*) FROM ktqdde."_s + table).toLongLong(),
                  embedded::DataFile::Shipped(table).rows.size())
            << table.toStdString();
    }
}

TEST(OfficeCreation, CreatorBecomesKeeper)
{
    const OfficeDatabase database;
    Office::Create(Administrator());
    EXPECT_EQ(Office(Administrator()).Right(), OfficeRight::Keeper);
    EXPECT_EQ(database.Ask(u"SELECT pg_has_role('%1', '%2_keeper', 'USAGE')"_s.arg(
                  database.User(Administrator()), database.Name())),
              u"t"_s);
}

TEST(OfficeCreation, OfficeThatStandsThereIsLeftAsItIs)
{
    const TestOffice office;
    office.Ask(u"UPDATE ktqdde.libraries SET local = '别处'"_s);
    EXPECT_TRUE(ErrorOf([] { Office::Create(Administrator()); }).contains(u"已有办公室"_s));
    office.Ask(u"UPDATE ktqdde.schema_version SET version = 0"_s);
    EXPECT_TRUE(ErrorOf([] { Office::Create(Administrator()); }).contains(u"不是本程序的数据库"_s));
    EXPECT_EQ(office.Ask(u"SELECT DISTINCT local FROM ktqdde.libraries"_s), u"别处"_s);
}

TEST(OfficeCreation, SchemaOfSomebodyElseIsRefusedByTheNameOfItsOwnerAndLeftAlone)
{
    OfficeDatabase database;
    database.AddUser(u"somebody"_s, {});
    database.Ask(u"CREATE SCHEMA ktqdde AUTHORIZATION \"%1\""_s.arg(database.User(u"somebody"_s)));
    const auto expectRefused = [&] {
        const CString told = ErrorOf([] { Office::Create(Administrator()); });
        EXPECT_TRUE(told.contains(u"请先移走它"_s) && told.contains(database.User(u"somebody"_s)))
            << told.toStdString();
    };
    expectRefused();
    database.Ask(u"GRANT USAGE, CREATE ON SCHEMA ktqdde TO PUBLIC"_s);
    expectRefused();
    EXPECT_EQ(database.Ask(u"SELECT count(*) FROM pg_class WHERE relnamespace = 'ktqdde'::regnamespace"_s),
              u"0"_s);
    EXPECT_EQ(
        database.Ask(u"SELECT count(*) FROM pg_roles WHERE rolname LIKE '%1\\_%'"_s.arg(database.Name())),
        u"0"_s);
}

TEST(OfficeCreation, CancelledCreationLeavesNothing)
{
    const OfficeDatabase database;
    EXPECT_THROW(Office::Create(Administrator(), [](int percent) { return percent < 50; }),
                 embedded::Cancelled);
    EXPECT_EQ(Traces(database), QString());
    EXPECT_EQ(Office::Status(Administrator()).schema, 0);
    Office::Create(Administrator());
    EXPECT_EQ(Office::Status(Administrator()).schema, Office::SchemaVersion);
}

TEST(OfficeCreation, UserWithoutTheRightsIsToldWhichAreMissingAndLeavesNothing)
{
    OfficeDatabase database;
    database.AddUser(u"somebody"_s, {});
    EXPECT_THROW(Office::Create(u"somebody"_s), embedded::RightsError);
    EXPECT_TRUE(ErrorOf([] { Office::Create(u"somebody"_s); }).contains(u"CREATEROLE"_s));
    // Half of them: the schema could be made, the roles not.
    database.Ask(
        u"GRANT CREATE ON DATABASE \"%1\" TO \"%2\""_s.arg(database.Name(), database.User(u"somebody"_s)));
    EXPECT_THROW(Office::Create(u"somebody"_s), embedded::RightsError);
    EXPECT_EQ(Traces(database), QString());
}

TEST(OfficeCreation, OfManyProgramsThatCreateAtOnceExactlyOneDoes)
{
    const OfficeDatabase database;
    constexpr std::size_t Programs = 4;
    std::vector<CString> ends(Programs);
    std::vector<std::thread> threads;
    for (CString& end : ends)
        threads.emplace_back([&end] { end = ErrorOf([] { Office::Create(Administrator()); }); });
    for (std::thread& thread : threads)
        thread.join();
    std::size_t created = 0;
    std::size_t told = 0;
    for (const CString& end : ends) {
        created += end == u"no error" ? 1 : 0;
        told += end.contains(u"已有办公室"_s) ? 1 : 0;
    }
    EXPECT_EQ(created, 1U);
    EXPECT_EQ(told, Programs - 1);
    EXPECT_EQ(Office::Status(Administrator()).contents.value().libraries,
              embedded::DataFile::Shipped(u"libraries"_s).rows.size());
}

TEST(OfficeCreation, NamesOfDatabasesAndRolesMayHoldAnything)
{
    const CString name = u"办公室 \"甲\"; --'"_s;
    const test::PostgresServer& server = test::SharedServer();
    server.CreateDatabase(name);
    test::ServiceFile services;
    services.Add(u"odd"_s, server, name, server.User());
    Office::Create(u"odd"_s);
    EXPECT_EQ(Office(u"odd"_s).Right(), OfficeRight::Keeper);
    EXPECT_EQ(
        server.Ask(name, u"SELECT count(*) FROM pg_roles WHERE rolname LIKE current_database() || '\\_%'"_s),
        u"3"_s);
}

TEST(OfficeCreation, DatabaseWhoseNameLeavesNoRoomForRolesIsRefused)
{
    const CString name(57, u'x');
    const test::PostgresServer& server = test::SharedServer();
    server.CreateDatabase(name);
    test::ServiceFile services;
    services.Add(u"long"_s, server, name, server.User());
    EXPECT_TRUE(ErrorOf([] { Office::Create(u"long"_s); }).contains(u"最多 56 个字节"_s));
    EXPECT_EQ(Office::Status(u"long"_s).schema, 0);
}

TEST(OfficeConnection, TellsEveryUserHisRight)
{
    const TestOffice test;
    EXPECT_EQ(Office(TestOffice::Reader()).Right(), OfficeRight::Reader);
    EXPECT_EQ(Office(TestOffice::Editor()).Right(), OfficeRight::Editor);
    EXPECT_EQ(Office(TestOffice::Keeper()).Right(), OfficeRight::Keeper);
    EXPECT_EQ(Office(TestOffice::Editor()).User(), test.User(TestOffice::Editor()));
    EXPECT_EQ(Office(TestOffice::Editor()).Name(), TestOffice::Editor());
    EXPECT_THROW(Office{TestOffice::Stranger()}, embedded::RightsError);
    EXPECT_TRUE(ErrorOf([] { Office{TestOffice::Stranger()}; }).contains(test.User(TestOffice::Stranger())));
}

TEST(OfficeConnection, RightThatIsTakenAwayIsGoneAtOnce)
{
    const TestOffice test;
    Office office(TestOffice::Editor());
    test.Ask(u"REVOKE \"%1_editor\" FROM \"%2\""_s.arg(test.Name(), test.User(TestOffice::Editor())));
    EXPECT_EQ(office.Right(), OfficeRight::None);
    EXPECT_THROW(office.CatalogueRevision(), embedded::RightsError);
}

TEST(OfficeConnection, RightsStayWhenTheDatabaseGetsAnotherName)
{
    TestOffice test;
    const QString name = test::NewDatabaseName();
    test::SharedServer().Ask(u"template1"_s,
                             u"ALTER DATABASE \"%1\" RENAME TO \"%2\""_s.arg(test.Name(), name));
    test.Services().Add(u"moved"_s, test::SharedServer(), name, test.User(TestOffice::Editor()));
    EXPECT_EQ(Office(u"moved"_s).Right(), OfficeRight::Editor);
}

TEST(OfficeConnection, DatabaseWithoutOfficeIsToldSo)
{
    const OfficeDatabase database;
    EXPECT_TRUE(ErrorOf([] { Office{Administrator()}; }).contains(u"还没有办公室"_s));
}

TEST(OfficeConnection, ServerThatIsNotThereIsUnreachable)
{
    test::ServiceFile services;
    const test::TempFolder folder;
    services.AddText(u"[gone]\nhost=%1\nport=5432\ndbname=a\nuser=a\n"_s.arg(folder.Native({})));
    EXPECT_THROW(Office{u"gone"_s}, embedded::UnreachableError);
    EXPECT_THROW(Office::Status(u"gone"_s), embedded::UnreachableError);
    EXPECT_THROW(Office::Create(u"gone"_s), embedded::UnreachableError);
}

TEST(OfficeConnection, ServerThatStopsIsUnreachableUntilItIsBack)
{
    const TestOffice test;
    Office office(TestOffice::Reader());
    test::SharedServer().Stop();
    EXPECT_THROW(office.CatalogueRevision(), embedded::UnreachableError);
    EXPECT_THROW(Office{TestOffice::Reader()}, embedded::UnreachableError);
    test::SharedServer().StartAgain();
    EXPECT_NO_THROW(Office(TestOffice::Reader()).CatalogueRevision());
}

TEST(OfficeUpgrade, OfficeOfANewerProgramIsRefusedInWordsAndLeftAlone)
{
    const TestOffice test;
    test.Ask(u"UPDATE ktqdde.schema_version SET version = 99"_s);
    const auto isTold = [](const CString& text) {
        return text.contains(u"由更新版本的程序建立（结构版本 99，本程序只识别到 2）"_s);
    };
    EXPECT_TRUE(isTold(ErrorOf([] { Office{TestOffice::Keeper()}; })));
    EXPECT_TRUE(isTold(ErrorOf([] { Office{TestOffice::Stranger()}; })));
    EXPECT_TRUE(isTold(ErrorOf([] { Office::Create(Administrator()); })));
    EXPECT_TRUE(isTold(ErrorOf([] { Office::Upgrade(Administrator()); })));
    EXPECT_EQ(test.Ask(u"SELECT version FROM ktqdde.schema_version"_s), u"99"_s);
    const OfficeStatus status = Office::Status(TestOffice::Reader());
    EXPECT_EQ(status.schema, 99);
    EXPECT_EQ(status.knownSchema, Office::SchemaVersion);
}

TEST(OfficeUpgrade, OfficeOfThisProgramStaysAsItIs)
{
    const TestOffice test;
    EXPECT_EQ(Office::Upgrade(Administrator()), Office::SchemaVersion);
    EXPECT_NO_THROW(Office{TestOffice::Reader()});
}

TEST(OfficeUpgrade, OfficeOfVersion1ComesOutAsANewOneAndKeepsWhatItHolds)
{
    const TestOffice test;
    const QString shape =
        u"SELECT proname, pg_get_function_identity_arguments(oid), md5(prosrc), proacl::text, "
        "proconfig::text, prosecdef FROM pg_proc WHERE pronamespace = 'ktqdde'::regnamespace ORDER BY 1, 2; "
        "SELECT attrelid::regclass, attname, atttypid::regtype, attnotnull FROM pg_attribute JOIN pg_class "
        "ON pg_class.oid = attrelid WHERE relnamespace = 'ktqdde'::regnamespace AND attnum > 0 AND "
        "NOT attisdropped ORDER BY 1, 2"_s;
    const QString wanted = test.Ask(shape);
    {
        Office keeper(TestOffice::Keeper());
        embedded::PublishedConfigurations(keeper).Publish(
            {u"甲"_s, {}, "<a/>", {}, u"工程"_s, {}, {{u"Q"_s, u"1"_s, u"泵"_s, u"台"_s}}});
    }
    QFile former(test::InSourceTree(u"tests/embedded/office-1.sql"_s));
    ASSERT_TRUE(former.open(QIODevice::ReadOnly));
    Database(embedded::ServiceOf(Administrator()))
        .ExecuteWholeStatements(QString::fromUtf8(former.readAll()));
    EXPECT_TRUE(ErrorOf([] { Office{TestOffice::Editor()}; }).contains(u"结构版本 1"_s));
    EXPECT_EQ(Office::Status(TestOffice::Editor()).right, OfficeRight::Editor);
    const QString publish = u"SELECT ktqdde.publish('甲', 1, 'b', sha256('b'), '', '', '[]')"_s;

    EXPECT_EQ(Office::Upgrade(Administrator()), 1);
    EXPECT_EQ(test.Ask(shape).toStdString(), wanted.toStdString());
    EXPECT_FALSE(test.Psql(TestOffice::Editor(), publish).isDone) << "no older program publishes";
    Office editor(TestOffice::Editor());
    embedded::PublishedConfigurations published(editor);
    EXPECT_EQ(published.Content(u"甲"_s, 1), "<a/>");
    EXPECT_EQ(test.Ask(u"SELECT project, project_id, name FROM ktqdde.numbers"_s), u"工程||泵"_s);
    EXPECT_EQ(published.Publish({u"甲"_s, {1, embedded::DigestOf("<a/>")}, "<b/>"}).version, 2);
}

TEST(OfficeUpgrade, DatabaseWithoutOfficeIsNotUpgraded)
{
    const OfficeDatabase database;
    EXPECT_TRUE(ErrorOf([] { Office::Upgrade(Administrator()); }).contains(u"还没有办公室"_s));
    EXPECT_EQ(Traces(database), QString());
}

TEST(OfficeUpgrade, StepsRunInTheirOrderAndWhatTheyBringIsCoveredByTheRights)
{
    const TestOffice test;
    Database database(embedded::ServiceOf(Administrator()));
    const CArray<embedded::OfficeStep> steps =
        embedded::KnownOfficeSteps() +
        CArray<embedded::OfficeStep>{
            [](Database& office) { office.Execute(u"CREATE TABLE remarks (text TEXT)"_s); },
            [](Database& office) { office.Execute(u"INSERT INTO remarks VALUES ('甲')"_s); }};
    EXPECT_EQ(embedded::UpgradeOfficeSchema(database, steps), Office::SchemaVersion);
    EXPECT_EQ(embedded::UpgradeOfficeSchema(database, steps), Office::SchemaVersion + 2);
    EXPECT_EQ(test.Psql(TestOffice::Reader(), u"SELECT text FROM ktqdde.remarks"_s).rows, u"甲\n"_s);
    EXPECT_FALSE(test.Psql(TestOffice::Keeper(), u"DELETE FROM ktqdde.remarks"_s).isDone);
    EXPECT_TRUE(ErrorOf([] { Office{TestOffice::Reader()}; }).contains(u"结构版本 4"_s));
}

TEST(OfficeUpgrade, StepThatFailsLeavesTheFormerState)
{
    const TestOffice test;
    Database database(embedded::ServiceOf(Administrator()));
    const CArray<embedded::OfficeStep> steps =
        embedded::KnownOfficeSteps() +
        CArray<embedded::OfficeStep>{
            [](Database& office) { office.Execute(u"CREATE TABLE remarks (text TEXT)"_s); },
            [](Database& office) { office.Fail(u"坏了"_s); }};
    EXPECT_TRUE(ErrorOf([&] { embedded::UpgradeOfficeSchema(database, steps); }).contains(u"坏了"_s));
    EXPECT_EQ(test.Ask(u"SELECT version FROM ktqdde.schema_version"_s),
              QString::number(Office::SchemaVersion));
    EXPECT_EQ(test.Ask(u"SELECT to_regclass('ktqdde.remarks')"_s), QString());
}

TEST(OfficeUpgrade, IsRefusedToAnybodyButTheOwnerWhoeverHeIs)
{
    TestOffice test;
    test.Services().Add(u"almighty"_s, test::SharedServer(), test.Name(), test::PostgresServer::User());
    Database database(embedded::ServiceOf(u"almighty"_s));
    const CArray<embedded::OfficeStep> steps =
        embedded::KnownOfficeSteps() + CArray<embedded::OfficeStep>{[](Database& office) {
            office.Execute(u"CREATE TABLE remarks (text TEXT)"_s);
        }};
    const CString error = ErrorOf([&] { embedded::UpgradeOfficeSchema(database, steps); });
    EXPECT_TRUE(error.contains(test.User(Administrator()))) << error.toStdString();
    EXPECT_EQ(test.Ask(u"SELECT to_regclass('ktqdde.remarks')"_s), QString());
}

TEST(OfficeUpgrade, DatabaseThatHasGotAnotherNameIsRefusedWithWhatMendsIt)
{
    TestOffice test;
    const QString former = test.Name();
    const QString name = test::NewDatabaseName();
    const auto rename = [](const QString& from, const QString& to) {
        test::SharedServer().Ask(u"template1"_s, u"ALTER DATABASE \"%1\" RENAME TO \"%2\""_s.arg(from, to));
    };
    rename(former, name);
    test.Services().Add(u"moved"_s, test::SharedServer(), name, test.User(Administrator()));
    const CArray<embedded::OfficeStep> steps =
        embedded::KnownOfficeSteps() + CArray<embedded::OfficeStep>{[](Database& office) {
            office.Execute(u"SELECT allow('editor', 'INSERT ON cell_data')"_s);
        }};
    const auto upgrade = [&] {
        Database database(embedded::ServiceOf(u"moved"_s));
        embedded::UpgradeOfficeSchema(database, steps);
    };
    const CString error = ErrorOf(upgrade);
    EXPECT_TRUE(error.contains(u"改过名"_s)) << error.toStdString();
    test::SharedServer().Ask(name, error.mid(error.indexOf(u"ALTER ROLE"_s)));
    EXPECT_EQ(ErrorOf(upgrade), u"no error"_s);
    for (const QString& right : {u"reader"_s, u"editor"_s, u"keeper"_s})
        test::SharedServer().Ask(name,
                                 u"ALTER ROLE \"%1_%3\" RENAME TO \"%2_%3\""_s.arg(name, former, right));
    rename(name, former);
}

TEST(OfficeUpgrade, NobodyButTheOwnerUpgrades)
{
    const TestOffice test;
    Database database(embedded::ServiceOf(TestOffice::Keeper()));
    const CArray<embedded::OfficeStep> steps =
        embedded::KnownOfficeSteps() + CArray<embedded::OfficeStep>{[](Database& office) {
            office.Execute(u"CREATE TABLE remarks (text TEXT)"_s);
        }};
    EXPECT_THROW(embedded::UpgradeOfficeSchema(database, steps), embedded::RightsError);
}

TEST(OfficeStatusTest, TellsAllOfAnOffice)
{
    const TestOffice test;
    Office office(TestOffice::Keeper());
    embedded::PublishedConfigurations published(office);
    published.Publish({u"甲"_s, {}, "<a/>"});
    published.Publish({u"乙"_s, {}, "<a/>"});
    published.Remove(u"乙"_s);
    const OfficeStatus status = Office::Status(TestOffice::Keeper());
    EXPECT_EQ(status.name, TestOffice::Keeper());
    EXPECT_EQ(status.server, u"本机/"_s + test.Name());
    EXPECT_EQ(status.user, test.User(TestOffice::Keeper()));
    EXPECT_EQ(status.right, OfficeRight::Keeper);
    EXPECT_FALSE(status.isEncrypted);
    EXPECT_EQ(status.schema, Office::SchemaVersion);
    EXPECT_EQ(status.knownSchema, Office::SchemaVersion);
    ASSERT_TRUE(status.contents.has_value());
    EXPECT_EQ(status.contents->revision, office.CatalogueRevision());
    EXPECT_EQ(status.contents->configurations, 1);
    EXPECT_EQ(status.contents->libraries, embedded::DataFile::Shipped(u"libraries"_s).rows.size());
}

TEST(OfficeStatusTest, WorksWhereNoOfficeWasCreated)
{
    const OfficeDatabase database;
    const OfficeStatus status = Office::Status(Administrator());
    EXPECT_EQ(status.schema, 0);
    EXPECT_EQ(status.right, OfficeRight::None);
    EXPECT_EQ(status.user, database.User(Administrator()));
    EXPECT_EQ(status.server, u"本机/"_s + database.Name());
}

TEST(OfficeStatusTest, UserWithoutARoleIsToldSo)
{
    const TestOffice test;
    const OfficeStatus status = Office::Status(TestOffice::Stranger());
    EXPECT_EQ(status.right, OfficeRight::None);
    EXPECT_EQ(status.schema, Office::SchemaVersion);
    EXPECT_FALSE(status.contents.has_value()) << "what was not looked at is not told as none";
}

TEST(OfficeStatusTest, TellsAddressAndEncryptionOfAServer)
{
    const test::PostgresServer server(test::Access::Encrypted);
    test::ServiceFile services;
    const auto add = [&](const CString& name, const CString& host, const CString& more) {
        services.AddText(u"[%1]\nhost=%2\nport=%3\ndbname=postgres\nuser=%4\n%5\n"_s.arg(
            name, host, server.Port(), server.User(), more));
    };
    add(u"plain"_s, server.Address(), u"sslmode=disable"_s);
    add(u"encrypted"_s, server.Address(), u"sslmode=require"_s);
    add(u"far"_s, NotKnownAsLocal(), u"sslmode=disable"_s);
    EXPECT_EQ(Office::Status(u"plain"_s).server, u"%1:%2/postgres"_s.arg(server.Address(), server.Port()));
    EXPECT_FALSE(Office::Status(u"plain"_s).isEncrypted);
    EXPECT_TRUE(Office::Status(u"encrypted"_s).isEncrypted);
    EXPECT_TRUE(Office::Status(u"far"_s).isEncrypted) << "whatever the entry says";
}

TEST(OfficeStatusTest, ServerElsewhereThatDoesNotEncryptIsNotUsed)
{
    const test::PostgresServer server(test::Access::Plain);
    test::ServiceFile services;
    services.AddText(u"[far]\nhost=%1\nport=%2\ndbname=postgres\nuser=%3\nsslmode=disable\n"_s.arg(
        NotKnownAsLocal(), server.Port(), server.User()));
    EXPECT_THROW(Office::Status(u"far"_s), embedded::UnreachableError);
}

TEST(OfficeStatusTest, RightsHaveWords)
{
    EXPECT_EQ(embedded::RightWord(OfficeRight::None), u"无"_s);
    EXPECT_EQ(embedded::RightWord(OfficeRight::Reader), u"读者"_s);
    EXPECT_EQ(embedded::RightWord(OfficeRight::Editor), u"编辑"_s);
    EXPECT_EQ(embedded::RightWord(OfficeRight::Keeper), u"管理员"_s);
}
