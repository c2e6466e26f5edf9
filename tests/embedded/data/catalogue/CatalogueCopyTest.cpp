#include "embedded/data/catalogue/CatalogueCopy.h"

#include "embedded/TestProject.h"
#include "embedded/data/catalogue/CatalogueSchema.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using embedded::CopiedState;
using embedded::CopyCatalogue;
using embedded::Database;
using embedded::StateOfCopy;
using embedded::Transaction;

namespace {

class CatalogueCopy : public ::testing::Test
{
protected:
    CatalogueCopy() { embedded::EnsureCatalogue(m_from); }

    static CString Rows(Database& database)
    {
        CString text;
        const embedded::CatalogueRows rows = embedded::ReadCatalogueRows(database);
        for (const auto& table : rows.tables) {
            text += table.name + u':' + table.columns.join(u',') + u'\n';
            for (const CStringArray& row : table.rows)
                text += row.join(u'\t') + u'\n';
        }
        return text;
    }

    test::TempFolder m_folder;
    Database m_from{m_folder.Path(u"from.db"_s)};
    Database m_to{m_folder.Path(u"to.db"_s)};
};

const CopiedState First{u"buero"_s, 1};

} // namespace

TEST_F(CatalogueCopy, HoldsEveryRowInItsOrderAndSaysOfWhichStateItIs)
{
    embedded::EnsureGivenIds(m_from);
    m_from.Execute(u"INSERT INTO given_ids VALUES ('specialties', 99)"_s);
    m_from.Execute(u"UPDATE bill_items SET rowid = 100000 WHERE number = '031001001'"_s);
    EXPECT_FALSE(StateOfCopy(m_to));
    CopyCatalogue(m_from, m_to, First);
    EXPECT_EQ(Rows(m_to), Rows(m_from));
    EXPECT_TRUE(Rows(m_to).contains(u"specialties\t99"_s));
    EXPECT_EQ(m_to.SchemaVersion(), m_from.SchemaVersion());
    EXPECT_EQ(StateOfCopy(m_to), First);
    EXPECT_NO_THROW(embedded::EnsureCatalogue(m_to));
}

TEST_F(CatalogueCopy, TakesThePlaceOfAnEarlierState)
{
    CopyCatalogue(m_from, m_to, First);
    m_from.Execute(u"DELETE FROM bill_items WHERE number LIKE '0310%'"_s);
    m_from.Execute(u"UPDATE libraries SET file_name = 'x'"_s);
    const CopiedState second{u"buero"_s, 7};
    CopyCatalogue(m_from, m_to, second);
    EXPECT_EQ(StateOfCopy(m_to), second);
    EXPECT_TRUE(Rows(m_to).startsWith(Rows(m_from))) << "the copy also has the table of given ids";
}

TEST_F(CatalogueCopy, OfAnOlderSchemaIsMadeAnew)
{
    CopyCatalogue(m_from, m_to, First);
    m_to.Execute(u"ALTER TABLE attributes DROP COLUMN unit"_s);
    m_to.SetSchemaVersion(embedded::CatalogueSchemaVersion - 1);
    CopyCatalogue(m_from, m_to, First);
    EXPECT_TRUE(Rows(m_to).startsWith(Rows(m_from)));
    EXPECT_EQ(m_to.SchemaVersion(), embedded::CatalogueSchemaVersion);
}

TEST_F(CatalogueCopy, NeverReplacesWhatANewerProgramOrAnotherOneHasMade)
{
    m_to.Execute(u"CREATE TABLE mine (a)"_s);
    EXPECT_TRUE(test::ErrorOf([&] { CopyCatalogue(m_from, m_to, First); }).contains(u"不是本程序的数据库"_s));
    m_to.SetSchemaVersion(embedded::CatalogueSchemaVersion + 1);
    EXPECT_TRUE(test::ErrorOf([&] { CopyCatalogue(m_from, m_to, First); }).contains(u"更新版本"_s));
    EXPECT_TRUE(m_to.HasTable(u"mine"_s));
}

TEST_F(CatalogueCopy, ThatFailsInTheMiddleLeavesTheOldState)
{
    CopyCatalogue(m_from, m_to, First);
    const CString before = Rows(m_to);
    m_from.Execute(u"DELETE FROM bill_items"_s);
    m_to.Execute(u"CREATE TRIGGER fault BEFORE INSERT ON quota_items "
                 "BEGIN SELECT RAISE(FAIL, 'disk'); END"_s);
    EXPECT_TRUE(test::ErrorOf([&] { CopyCatalogue(m_from, m_to, {u"buero"_s, 2}); }).contains(u"disk"_s));
    EXPECT_EQ(Rows(m_to), before);
    EXPECT_EQ(StateOfCopy(m_to), First);
}

TEST_F(CatalogueCopy, WaitsForNobodyWhoReadsTheOldStateBeforeItCommits)
{
    CopyCatalogue(m_from, m_to, First);
    Database other(m_folder.Path(u"to.db"_s));
    const embedded::CatalogueRows rows = embedded::ReadCatalogueRows(m_from);
    Transaction transaction(m_to);
    embedded::WriteCatalogueCopy(m_to, rows, {u"buero"_s, 2});
    EXPECT_EQ(StateOfCopy(other), First);
}
