#include "embedded/ImportFixture.h"
#include "embedded/data/Database.h"
#include "platform/Files.h"

using namespace Qt::StringLiterals;
using embedded::EmbeddedHost;
using embedded::LibraryRole;
using embedded::TableKind;

namespace {

/// The libraries of a catalogue of version 1, with a bill item, a quota item and a category of a person's
/// own.
const CString Version1 = uR"(
CREATE TABLE libraries (role TEXT PRIMARY KEY, code TEXT NOT NULL, file_name TEXT NOT NULL,
    local TEXT NOT NULL, year TEXT NOT NULL, code_length INTEGER NOT NULL, suffix_length INTEGER NOT NULL);
CREATE TABLE bill_sections (index_path TEXT PRIMARY KEY, title TEXT NOT NULL);
CREATE TABLE bill_items (number TEXT PRIMARY KEY, name TEXT NOT NULL, unit TEXT NOT NULL,
    unit_code INTEGER NOT NULL, with_annex INTEGER NOT NULL, cal_rule TEXT NOT NULL, index_path TEXT NOT NULL);
CREATE TABLE quota_sections (code TEXT PRIMARY KEY, title TEXT NOT NULL);
CREATE TABLE quota_items (number TEXT PRIMARY KEY, name TEXT NOT NULL, unit TEXT NOT NULL,
    unit_code INTEGER NOT NULL, with_annex INTEGER NOT NULL, cal_rule TEXT NOT NULL, section TEXT NOT NULL,
    bills TEXT NOT NULL);
INSERT INTO libraries VALUES
    ('qd', 'GB50856-2013', '通用安装工程工程量计算规范2013', '全国', '2013', 9, 3),
    ('qd_de', 'DEMO-QDDE-2024', '示例安装定额（清单模式）', '示例', '2024', -1, -1),
    ('de', 'DEMO-DE-2024', '示例安装定额（定额模式）', '示例', '2024', -1, -1);
INSERT INTO bill_sections VALUES ('0999', '自有章'), ('0310', '给排水'), ('0310\031001', '管道');
INSERT INTO bill_items VALUES
    ('099901002', '自有乙', '10m', 10, 1, '管道长度', '0999'),
    ('099901001', '自有甲', 'm', 1, 0, '', '0999'),
    ('031001001', '镀锌钢管', 'm', 1, 1, '管道长度', '0310\031001');
INSERT INTO quota_sections VALUES ('自', '自有');
INSERT INTO quota_items VALUES ('自-1', '自有安装', '10m', 10, 1, '管道长度', '自', '099901002,031001001');
UPDATE small_categories SET index_path = '0310\031001' WHERE index_path LIKE '0310\031001%';
UPDATE small_categories SET index_path = '0999' WHERE name = '热水管' AND specialty = '给排水';
PRAGMA user_version = 1)"_s;

/// A project whose catalogue an older program has made, and in which it stored no library.
class CatalogueUpgrade : public test::ImportFixture
{
protected:
    CatalogueUpgrade()
    {
        embedded::Database catalogue(m_project.Path(u"app\\catalogue.db"_s));
        for (const CString& table :
             {u"libraries"_s, u"bill_sections"_s, u"bill_items"_s, u"quota_sections"_s, u"quota_items"_s})
            catalogue.Execute(u"DROP TABLE "_s + table);
        catalogue.ExecuteScript(Version1);
        m_project.Sql(u"project.ktqd"_s, u"DELETE FROM settings WHERE name LIKE 'library%'"_s);
    }
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
