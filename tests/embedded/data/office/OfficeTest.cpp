#include "embedded/data/office/Office.h"

#include "embedded/OfficeDatabase.h"
#include "embedded/TestProject.h"
#include "embedded/data/engine/DataFile.h"
#include "embedded/data/office/PublishedConfigurations.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using embedded::Office;
using embedded::OfficeRight;
using embedded::OfficeStatus;
using test::ErrorOf;
using test::OfficeDatabase;
using test::TestOffice;

namespace {

/// The servers' address on this machine, in a form that is not taken for one.
CString NotKnownAsLocal()
{
    quint32 number = 0;
    for (const CString& part : test::PostgresServer::Address().split(u'.'))
        number = number << 8 | part.toUInt();
    return CString::number(number);
}

} // namespace

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
    EXPECT_TRUE(ErrorOf([] { Office{OfficeDatabase::Administrator()}; }).contains(u"还没有办公室"_s));
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

// To the server a limit of 0 is none.
TEST(OfficeConnection, WhoIsNotToWaitForOthersDoesNot)
{
    const TestOffice test;
    Office first(TestOffice::Keeper());
    const embedded::Transaction writing(first.Connection());
    qputenv("KTQDDE_DATABASE_WAIT", "0");
    Office second(TestOffice::Keeper());
    qunsetenv("KTQDDE_DATABASE_WAIT");
    EXPECT_THROW(const embedded::Transaction refused(second.Connection()), embedded::BusyError);
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
    const OfficeStatus status = Office::Status(OfficeDatabase::Administrator());
    EXPECT_EQ(status.schema, 0);
    EXPECT_EQ(status.right, OfficeRight::None);
    EXPECT_EQ(status.user, database.User(OfficeDatabase::Administrator()));
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
