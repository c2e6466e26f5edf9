#include "embedded/ImportFixture.h"
#include "embedded/data/engine/Database.h"

using namespace Qt::StringLiterals;
using embedded::TableKind;
using test::ErrorOf;

namespace {

/// What only a catalogue in a file of the project's own can meet with.
using CatalogueFileImport = test::ImportFixture;

} // namespace

TEST_F(CatalogueFileImport, FaultOfTheDatabaseInTheMiddleLeavesTheOldDataWhole)
{
    const CString before = Exported(TableKind::Bill);
    for (const CString& when : {u"900000000"_s, u"900000777"_s, u"900001999"_s}) {
        m_project.Sql(u"app\\catalogue.db"_s,
                      u"CREATE TRIGGER fault BEFORE INSERT ON bill_items WHEN "
                      "NEW.number = '%1' BEGIN SELECT RAISE(FAIL, 'disk'); END"_s.arg(when));
        EXPECT_TRUE(ErrorOf([&] {
                        Import(TableKind::Bill, test::BillRows(2000), {.replace = true});
                    }).contains(u"disk"_s));
        m_project.Sql(u"app\\catalogue.db"_s, u"DROP TRIGGER fault"_s);
        EXPECT_EQ(Exported(TableKind::Bill), before);
    }
}

TEST_F(CatalogueFileImport, LockedCatalogueIsReportedAsSuch)
{
    embedded::Database other(m_project.Path(u"app\\catalogue.db"_s));
    const embedded::Transaction transaction(other);
    EXPECT_TRUE(ErrorOf([&] { Import(TableKind::Bill, test::BillRows(1)); }).contains(u"被其他程序占用"_s));
}

TEST_F(CatalogueFileImport, NewerCatalogueIsRefused)
{
    m_project.Sql(u"app\\catalogue.db"_s, u"PRAGMA user_version = 99"_s);
    EXPECT_TRUE(ErrorOf([&] { Import(TableKind::Bill, test::BillRows(1)); }).contains(u"更新版本"_s));
    EXPECT_TRUE(ErrorOf([&] { Exported(TableKind::Bill); }).contains(u"更新版本"_s));
}
