#include "embedded/ImportFixture.h"
#include "embedded/OldProject.h"

using namespace Qt::StringLiterals;
using embedded::EmbeddedHost;
using embedded::LibraryRole;
using embedded::TableKind;

namespace {

/// A project whose catalogue an older program has made, and in which it stored no library.
class CatalogueUpgrade : public test::ImportFixture
{
protected:
    CatalogueUpgrade() { test::MakeOld(m_project); }
    void Change(const CString& statement) const { m_project.Sql(u"app\\catalogue.db"_s, statement); }
    QByteArray Catalogue() const
    {
        return m_project.Temp().ReadFile(test::TestProject::Below(u"app\\catalogue.db"_s));
    }
};

} // namespace

TEST_F(CatalogueUpgrade, ItemsOfTheOldCatalogueStayInTheirOrderAndInUse)
{
    EmbeddedHost host(m_project.Folder());
    EXPECT_EQ(host.LibraryInUse(LibraryRole::Bill), u"GB50856-2013"_s);
    EXPECT_EQ(host.LibraryInUse(LibraryRole::QuotaOfBills), u"DEMO-QDDE-2024"_s);
    EXPECT_EQ(host.LibraryInUse(LibraryRole::Quota), u"DEMO-DE-2024"_s);
    const embedded::LibraryContents& contents = host.Contents();
    ASSERT_EQ(contents.bills.size(), 3U);
    ASSERT_EQ(contents.bills[0].items.size(), 2U);
    EXPECT_EQ(contents.bills[0].title, u"自有章"_s);
    EXPECT_EQ(contents.bills[0].items[0].strName, u"自有乙"_s);
    EXPECT_EQ(contents.bills[0].items[0].nUnitCode, 10);
    EXPECT_EQ(contents.bills[0].items[0].nWithAnnex, 1);
    ASSERT_EQ(contents.quotas.size(), 1U);
    EXPECT_EQ(contents.quotas[0].items[0].record.strNumber, u"自-1"_s);
    EXPECT_EQ(contents.quotas[0].items[0].bills, (CStringArray{u"099901002"_s, u"031001001"_s}));
    host.SetMode(SQdDeInfo::QuotaMode);
    EXPECT_EQ(contents.quotas[0].items[0].record.strName, u"自有安装"_s) << "both modes had the same items";
}

TEST_F(CatalogueUpgrade, ShippedLibrariesThatTheOldCatalogueLacksComeBehind)
{
    EmbeddedHost host(m_project.Folder());
    for (const LibraryRole role : embedded::AllLibraryRoles)
        EXPECT_EQ(host.LibrariesOf(role).size(), 2);
    host.SetLibrary(LibraryRole::Bill, u"GB50500-2008"_s);
    EXPECT_TRUE(host.Roles().libraries->IsInQdk(u"030801001"_s));
    EXPECT_FALSE(host.Roles().libraries->IsInQdk(u"099901001"_s));
    host.SetLibrary(LibraryRole::QuotaOfBills, u"DEMO-QDDE-2025"_s);
    EXPECT_FALSE(host.Contents().quotas[1].items[0].bills.isEmpty());
}

TEST_F(CatalogueUpgrade, CategoriesAtShippedPlacesGetOneInTheNewLibraryAndOthersKeepTheirs)
{
    EmbeddedHost host(m_project.Folder());
    host::ICategories& categories = *host.Roles().categories;
    EXPECT_EQ(categories.GetIndexPath(u"给排水\\管道\\给水管\\"_s), u"0310\\031001"_s);
    EXPECT_EQ(categories.GetIndexPath(u"给排水\\管道\\热水管\\"_s), u"0999"_s);
    host.SetLibrary(LibraryRole::Bill, u"GB50500-2008"_s);
    EXPECT_EQ(categories.GetIndexPath(u"给排水\\管道\\给水管\\"_s), u"C8\\030801"_s);
    EXPECT_EQ(categories.GetIndexPath(u"给排水\\管道\\热水管\\"_s), CString());
}

TEST_F(CatalogueUpgrade, HappensOnceAndAnExportHoldsWhatWasThere)
{
    EXPECT_EQ(Exported(TableKind::Quota).section(u'\n', 1),
              u"自-1,自有安装,10m,10,是,管道长度,自,自有\r\n"_s);
    const QByteArray upgraded = Catalogue();
    EXPECT_EQ(Exported(TableKind::Bill).count(u"自有章"_s), 2);
    EXPECT_EQ(Catalogue(), upgraded);
}

TEST_F(CatalogueUpgrade, FailureOnTheWayLeavesTheOldCatalogueAndItCanBeRepeated)
{
    m_project.Sql(u"app\\catalogue.db"_s, u"CREATE TRIGGER fault BEFORE UPDATE ON small_categories BEGIN "
                                          "SELECT RAISE(FAIL, 'disk'); END"_s);
    const QByteArray before = Catalogue();
    EXPECT_TRUE(test::ErrorOf([&] { EmbeddedHost(m_project.Folder()); }).contains(u"disk"_s));
    EXPECT_EQ(Catalogue(), before);
    m_project.Sql(u"app\\catalogue.db"_s, u"DROP TRIGGER fault"_s);
    EXPECT_EQ(EmbeddedHost(m_project.Folder()).Contents().bills.size(), 3U);
}

TEST_F(CatalogueUpgrade, TablesThatAreEmptyStayEmpty)
{
    Change(u"DELETE FROM bill_items"_s);
    Change(u"DELETE FROM quota_items"_s);
    Change(u"DELETE FROM quota_sections"_s);
    EmbeddedHost host(m_project.Folder());
    ASSERT_EQ(host.Contents().bills.size(), 3U);
    for (const embedded::BillSection& section : host.Contents().bills)
        EXPECT_TRUE(section.items.empty()) << section.indexPath.toStdString();
    EXPECT_TRUE(host.Contents().quotas.empty());
    host.SetLibrary(LibraryRole::QuotaOfBills, u"DEMO-QDDE-2025"_s);
    EXPECT_FALSE(host.Contents().quotas.empty());
}

TEST_F(CatalogueUpgrade, LibrariesUnderOtherCodesGetTheShippedOnesBehindThemWithTheirItems)
{
    Change(u"UPDATE libraries SET code = 'MINE-' || role"_s);
    EmbeddedHost host(m_project.Folder());
    EXPECT_EQ(host.LibraryInUse(LibraryRole::Bill), u"MINE-qd"_s);
    EXPECT_EQ(host.Contents().bills.size(), 3U);
    EXPECT_EQ(host.Contents().quotas[0].items[0].bills.size(), 2);
    EXPECT_EQ(host.LibrariesOf(LibraryRole::Bill).size(), 3);
    host.SetLibrary(LibraryRole::Bill, u"GB50856-2013"_s);
    EXPECT_GT(host.Contents().bills.size(), 50U);
    host.SetLibrary(LibraryRole::QuotaOfBills, u"DEMO-QDDE-2024"_s);
    EXPECT_GT(host.Contents().quotas.size(), 20U);
}

TEST_F(CatalogueUpgrade, LibrariesOfWhichItCannotBeToldWhoseTheItemsAreAreRefusedInWords)
{
    const std::pair<CString, CString> faults[] = {
        {u"UPDATE libraries SET code = 'X' WHERE role <> 'qd'"_s, u"已损坏（两个库的代码都是“X”）"_s},
        {u"UPDATE libraries SET code = 'Y' WHERE role = 'de'"_s, u"no error"_s},
        {u"DELETE FROM libraries WHERE role = 'de'"_s, u"已损坏（没有用途为“de”的库）"_s},
        {u"UPDATE libraries SET code = '' WHERE role = 'qd'"_s, u"已损坏（用途为“qd”的库没有代码）"_s}};
    for (const auto& [fault, words] : faults) {
        const test::TestProject project;
        project.Put();
        test::MakeOld(project);
        project.Sql(u"app\\catalogue.db"_s, fault);
        const CString error = test::ErrorOf([&] { EmbeddedHost(project.Folder()); });
        EXPECT_TRUE(error.contains(words)) << error.toStdString();
    }
}

TEST_F(CatalogueUpgrade, CategoriesThatAPersonHasMadeOrMovedKeepTheirPlace)
{
    Change(u"UPDATE small_categories SET id = 990001 WHERE name = '给水管'"_s);
    Change(u"UPDATE small_categories SET index_path = '0304\\030404' WHERE id = 10102"_s);
    EmbeddedHost host(m_project.Folder());
    host.SetLibrary(LibraryRole::Bill, u"GB50500-2008"_s);
    for (const CString& path : {u"给排水\\管道\\给水管\\"_s, u"给排水\\管道\\热水管\\"_s})
        EXPECT_EQ(host.Roles().categories->GetIndexPath(path), CString()) << path.toStdString();
}

TEST_F(CatalogueUpgrade, ReadOnlyCatalogueIsRefusedInWordsAndStays)
{
    if (test::TempFolder::IgnoresPermissions()) GTEST_SKIP() << "this user may write everything";
    const QByteArray before = Catalogue();
    const CString file = test::TestProject::Below(u"app\\catalogue.db"_s);
    m_project.Temp().SetReadOnly(file, true);
    const CString error = test::ErrorOf([&] { EmbeddedHost(m_project.Folder()); });
    m_project.Temp().SetReadOnly(file, false);
    EXPECT_TRUE(error.contains(u"旧版程序"_s) && error.contains(u"只读"_s)) << error.toStdString();
    EXPECT_EQ(Catalogue(), before);
}

TEST_F(CatalogueUpgrade, AttributesGetTheUnitsByWhichTheirNamesCounted)
{
    const EmbeddedHost host(m_project.Folder());
    const embedded::SmallCategory& pipe =
        host.CatalogueContents().specialties.at(0).bigCategories.at(0).smallCategories.at(0);
    const QStringList lengths{u"公称直径"_s, u"管外径"_s, u"壁厚"_s, u"保温厚度"_s};
    ASSERT_EQ(pipe.units.size() * 4, pipe.attributes.size());
    for (qsizetype i = 0; i < pipe.units.size(); ++i) {
        const bool isLength = lengths.contains(pipe.attributes[4 * i + 1]);
        EXPECT_EQ(pipe.units[i], isLength ? u"mm"_s : CString()) << pipe.attributes[4 * i + 1].toStdString();
    }
}

TEST_F(CatalogueUpgrade, CatalogueOfTheSecondVersionGetsUnitsAndKeepsItsLibraries)
{
    const test::TestProject project;
    project.Put();
    const CString file = u"app\\catalogue.db"_s;
    project.Sql(file, u"ALTER TABLE attributes DROP COLUMN unit"_s);
    project.Sql(file, u"UPDATE libraries SET local = '自有' WHERE code = 'GB50856-2013'"_s);
    project.Sql(file, u"PRAGMA user_version = 2"_s);
    const EmbeddedHost host(project.Folder());
    EXPECT_EQ(host.LibrariesOf(LibraryRole::Bill).size(), 2);
    const embedded::SmallCategory& pipe =
        host.CatalogueContents().specialties.at(0).bigCategories.at(0).smallCategories.at(0);
    EXPECT_TRUE(pipe.units.contains(u"mm"_s));
}
