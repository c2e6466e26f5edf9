#include "embedded/data/office/Office.h"
#include "embedded/OfficeDatabase.h"
#include "embedded/TestProject.h"
#include "embedded/data/catalogue/CatalogueSchema.h"
#include "embedded/data/engine/DataFile.h"
#include "embedded/data/engine/Error.h"
#include "embedded/data/engine/Service.h"
#include "embedded/data/office/OfficeSchema.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using embedded::Office;
using embedded::OfficeRight;
using test::ErrorOf;
using test::OfficeDatabase;
using test::TestOffice;

namespace {

CString Administrator()
{
    return OfficeDatabase::Administrator();
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
    EXPECT_EQ(office.Ask(u"SELECT DISTINCT local FROM ktqdde.libraries"_s), u"别处"_s);
}
