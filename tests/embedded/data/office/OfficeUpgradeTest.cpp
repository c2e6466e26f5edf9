#include "embedded/OfficeDatabase.h"
#include "embedded/TestProject.h"
#include "embedded/data/engine/Service.h"
#include "embedded/data/office/Office.h"
#include "embedded/data/office/OfficeSchema.h"
#include "embedded/data/office/PublishedConfigurations.h"
#include "support/SourceTree.h"

#include <QtCore/QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using embedded::Database;
using embedded::Office;
using embedded::OfficeRight;
using embedded::OfficeStatus;
using test::ErrorOf;
using test::OfficeDatabase;
using test::TestOffice;

TEST(OfficeUpgrade, OfficeOfANewerProgramIsRefusedInWordsAndLeftAlone)
{
    const TestOffice test;
    test.Ask(u"UPDATE ktqdde.schema_version SET version = 99"_s);
    const auto isTold = [](const CString& text) {
        return text.contains(u"由更新版本的程序建立（结构版本 99，本程序只识别到 2）"_s);
    };
    EXPECT_TRUE(isTold(ErrorOf([] { Office{TestOffice::Keeper()}; })));
    EXPECT_TRUE(isTold(ErrorOf([] { Office{TestOffice::Stranger()}; })));
    EXPECT_TRUE(isTold(ErrorOf([] { Office::Create(OfficeDatabase::Administrator()); })));
    EXPECT_TRUE(isTold(ErrorOf([] { Office::Upgrade(OfficeDatabase::Administrator()); })));
    EXPECT_EQ(test.Ask(u"SELECT version FROM ktqdde.schema_version"_s), u"99"_s);
    const OfficeStatus status = Office::Status(TestOffice::Reader());
    EXPECT_EQ(status.schema, 99);
    EXPECT_EQ(status.knownSchema, Office::SchemaVersion);
}

TEST(OfficeUpgrade, OfficeOfThisProgramStaysAsItIs)
{
    const TestOffice test;
    EXPECT_EQ(Office::Upgrade(OfficeDatabase::Administrator()), Office::SchemaVersion);
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
    Database(embedded::ServiceOf(OfficeDatabase::Administrator()))
        .ExecuteWholeStatements(QString::fromUtf8(former.readAll()));
    EXPECT_TRUE(ErrorOf([] { Office{TestOffice::Editor()}; }).contains(u"结构版本 1"_s));
    EXPECT_EQ(Office::Status(TestOffice::Editor()).right, OfficeRight::Editor);
    const QString publish = u"SELECT ktqdde.publish('甲', 1, 'b', sha256('b'), '', '', '[]')"_s;

    EXPECT_EQ(Office::Upgrade(OfficeDatabase::Administrator()), 1);
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
    EXPECT_TRUE(
        ErrorOf([] { Office::Upgrade(OfficeDatabase::Administrator()); }).contains(u"还没有办公室"_s));
    EXPECT_EQ(database.Traces(), QString());
}

TEST(OfficeUpgrade, StepsRunInTheirOrderAndWhatTheyBringIsCoveredByTheRights)
{
    const TestOffice test;
    Database database(embedded::ServiceOf(OfficeDatabase::Administrator()));
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
    Database database(embedded::ServiceOf(OfficeDatabase::Administrator()));
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
    EXPECT_TRUE(error.contains(test.User(OfficeDatabase::Administrator()))) << error.toStdString();
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
    test.Services().Add(u"moved"_s, test::SharedServer(), name, test.User(OfficeDatabase::Administrator()));
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
