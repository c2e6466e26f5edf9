#include "embedded/OfficeDatabase.h"
#include "embedded/TestProject.h"
#include "embedded/data/catalogue/CatalogueSchema.h"
#include "embedded/data/engine/DataFile.h"
#include "embedded/data/office/Office.h"

#include <gtest/gtest.h>

#include <thread>

using namespace Qt::StringLiterals;
using embedded::Office;
using embedded::OfficeRight;
using test::ErrorOf;
using test::OfficeDatabase;
using test::TestOffice;

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
    Office::Create(OfficeDatabase::Administrator());
    EXPECT_EQ(Office(OfficeDatabase::Administrator()).Right(), OfficeRight::Keeper);
    EXPECT_EQ(database.Ask(u"SELECT pg_has_role('%1', '%2_keeper', 'USAGE')"_s.arg(
                  database.User(OfficeDatabase::Administrator()), database.Name())),
              u"t"_s);
}

TEST(OfficeCreation, OfficeThatStandsThereIsLeftAsItIs)
{
    const TestOffice office;
    office.Ask(u"UPDATE ktqdde.libraries SET local = '别处'"_s);
    EXPECT_TRUE(ErrorOf([] { Office::Create(OfficeDatabase::Administrator()); }).contains(u"已有办公室"_s));
    office.Ask(u"UPDATE ktqdde.schema_version SET version = 0"_s);
    EXPECT_TRUE(
        ErrorOf([] { Office::Create(OfficeDatabase::Administrator()); }).contains(u"不是本程序的数据库"_s));
    EXPECT_EQ(office.Ask(u"SELECT DISTINCT local FROM ktqdde.libraries"_s), u"别处"_s);
}

TEST(OfficeCreation, SchemaOfSomebodyElseIsRefusedByTheNameOfItsOwnerAndLeftAlone)
{
    OfficeDatabase database;
    database.AddUser(u"somebody"_s, {});
    database.Ask(u"CREATE SCHEMA ktqdde AUTHORIZATION \"%1\""_s.arg(database.User(u"somebody"_s)));
    const auto expectRefused = [&] {
        const CString told = ErrorOf([] { Office::Create(OfficeDatabase::Administrator()); });
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
    EXPECT_THROW(Office::Create(OfficeDatabase::Administrator(), [](int percent) { return percent < 50; }),
                 embedded::Cancelled);
    EXPECT_EQ(database.Traces(), QString());
    EXPECT_EQ(Office::Status(OfficeDatabase::Administrator()).schema, 0);
    Office::Create(OfficeDatabase::Administrator());
    EXPECT_EQ(Office::Status(OfficeDatabase::Administrator()).schema, Office::SchemaVersion);
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
    EXPECT_EQ(database.Traces(), QString());
}

TEST(OfficeCreation, OfManyProgramsThatCreateAtOnceExactlyOneDoes)
{
    const OfficeDatabase database;
    constexpr std::size_t Programs = 4;
    std::vector<CString> ends(Programs);
    std::vector<std::thread> threads;
    for (CString& end : ends)
        threads.emplace_back(
            [&end] { end = ErrorOf([] { Office::Create(OfficeDatabase::Administrator()); }); });
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
    EXPECT_EQ(Office::Status(OfficeDatabase::Administrator()).contents.value().libraries,
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
