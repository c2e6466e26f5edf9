#include "embedded/TestProject.h"
#include "embedded/data/engine/Database.h"
#include "embedded/data/project/ProjectFolder.h"
#include "platform/Files.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using embedded::EmbeddedHost;
using test::ErrorOf;
using test::TestProject;

namespace {

const CString ProjectFile = u"project.ktqd"_s;
const CString CatalogueFile = u"app\\catalogue.db"_s;

class DefectiveProject : public ::testing::Test
{
protected:
    DefectiveProject() { m_project.Put(); }
    CString OpeningError() const
    {
        return ErrorOf([&] { const EmbeddedHost host(m_project.Folder()); });
    }
    void Overwrite(const CString& file, const QByteArray& bytes) const
    {
        m_project.Temp().WriteFile(TestProject::Below(file), bytes);
    }
    QByteArray Content(const CString& file) const
    {
        return m_project.Temp().ReadFile(TestProject::Below(file));
    }

    TestProject m_project;
};

} // namespace

TEST(NoProject, FolderWithoutProjectIsRefusedAndNothingIsMadeInIt)
{
    const TestProject project;
    project.Temp().MakeFolder(TestProject::Name());
    const CString error = ErrorOf([&] { const EmbeddedHost host(project.Folder()); });
    EXPECT_TRUE(error.contains(u"没有工程"_s)) << error.toStdString();
    EXPECT_FALSE(project.Temp().Exists(TestProject::Below(ProjectFile)));
    EXPECT_FALSE(project.Temp().Exists(TestProject::Below(u"app"_s)));
}

TEST(NoProject, EmptyProjectFileIsNoProject)
{
    const TestProject project;
    project.Temp().MakeFolder(TestProject::Name());
    project.Temp().WriteFile(TestProject::Below(ProjectFile), QByteArray());
    EXPECT_FALSE(embedded::IsProject(project.Folder()));
    EXPECT_TRUE(ErrorOf([&] { const EmbeddedHost host(project.Folder()); }).contains(u"没有工程"_s));
    project.Create();
    EXPECT_TRUE(embedded::IsProject(project.Folder()));
}

TEST_F(DefectiveProject, FileThatIsNoDatabaseIsReportedAsDamaged)
{
    for (const CString& file : {ProjectFile, CatalogueFile}) {
        const QByteArray good = Content(file);
        Overwrite(file, QByteArray("this is no database, but long enough to be looked at").repeated(40));
        const CString error = OpeningError();
        EXPECT_TRUE(error.contains(u"已损坏"_s)) << error.toStdString();
        Overwrite(file, good);
    }
    EXPECT_EQ(OpeningError(), u"no error"_s);
}

TEST_F(DefectiveProject, DatabaseCutShortIsRefused)
{
    for (const CString& file : {ProjectFile, CatalogueFile}) {
        const QByteArray good = Content(file);
        for (const qsizetype length : {qsizetype(16), qsizetype(100), good.size() / 3, good.size() - 4096}) {
            Overwrite(file, good.left(length));
            EXPECT_NE(OpeningError(), u"no error"_s) << file.toStdString() << ' ' << length;
        }
        Overwrite(file, good);
    }
}

TEST_F(DefectiveProject, OverwrittenPagesNeverCrash)
{
    // Damage inside a page may go unnoticed, but it must end in a host or in an error.
    const QByteArray good = Content(CatalogueFile);
    for (qsizetype page = 4096; page < good.size(); page += 4096) {
        QByteArray bad = good;
        bad.replace(page, 64, QByteArray(64, '\xA5'));
        Overwrite(CatalogueFile, bad);
        EXPECT_FALSE(OpeningError().isEmpty());
    }
}

TEST_F(DefectiveProject, MissingTableIsRefused)
{
    m_project.Sql(CatalogueFile, u"DROP TABLE attributes"_s);
    EXPECT_TRUE(OpeningError().contains(u"attributes"_s));
}

TEST_F(DefectiveProject, RowThatPointsNowhereIsReportedAsDamaged)
{
    m_project.Sql(CatalogueFile,
                  u"INSERT INTO attributes VALUES ('电气\\无\\无', '', '名', '', 'AM_X', '')"_s);
    const CString error = OpeningError();
    EXPECT_TRUE(error.contains(u"已损坏"_s) && error.contains(u"电气\\无\\无"_s)) << error.toStdString();
}

TEST_F(DefectiveProject, NewerProjectIsRefusedAndStaysAsItIs)
{
    m_project.Sql(ProjectFile, u"PRAGMA user_version = 3"_s);
    const QByteArray before = Content(ProjectFile);
    const CString error = OpeningError();
    EXPECT_TRUE(error.contains(u"更新版本"_s)) << error.toStdString();
    EXPECT_EQ(Content(ProjectFile), before);
}

TEST_F(DefectiveProject, NewerCatalogueIsRefusedAndStaysAsItIs)
{
    m_project.Sql(CatalogueFile, u"PRAGMA user_version = 4"_s);
    const QByteArray before = Content(CatalogueFile);
    const CString error = OpeningError();
    EXPECT_TRUE(error.contains(u"更新版本"_s)) << error.toStdString();
    EXPECT_EQ(Content(CatalogueFile), before);
}

TEST_F(DefectiveProject, MissingCatalogueIsMadeAnew)
{
    const auto removed = platform::RealFileSystem().Remove(m_project.Path(CatalogueFile));
    ASSERT_TRUE(removed);
    EmbeddedHost host(m_project.Folder());
    SNvKtSmallCategoryId id;
    EXPECT_TRUE(host.Roles().categories->SmallCategoryNameToId(u"给排水\\管道\\给水管"_s, id));
    EXPECT_FALSE(Content(CatalogueFile).isEmpty());
}

TEST_F(DefectiveProject, StoredSpecialtyThatIsNotKnownIsRefused)
{
    m_project.Sql(ProjectFile, u"UPDATE settings SET value = '园林' WHERE name = 'specialty'"_s);
    EXPECT_TRUE(OpeningError().contains(u"园林"_s));
}

TEST_F(DefectiveProject, StoredModeThatIsNotKnownIsRefused)
{
    m_project.Sql(ProjectFile, u"UPDATE settings SET value = '7' WHERE name = 'mode'"_s);
    EXPECT_TRUE(OpeningError().contains(u"模式"_s));
}

TEST_F(DefectiveProject, LockedProjectIsReportedAsSuch)
{
    embedded::Database other(m_project.Path(ProjectFile));
    other.Execute(u"BEGIN EXCLUSIVE"_s);
    const CString error = OpeningError();
    EXPECT_TRUE(error.contains(u"被其他程序占用"_s)) << error.toStdString();
}

TEST_F(DefectiveProject, SettingThatCannotBeStoredChangesNothing)
{
    EmbeddedHost host(m_project.Folder());
    m_project.Sql(ProjectFile, u"DROP TABLE settings"_s);
    EXPECT_NE(ErrorOf([&] { host.SetCurrentSpec(u"消防"_s); }), u"no error"_s);
    EXPECT_NE(ErrorOf([&] { host.SetMode(SQdDeInfo::QuotaMode); }), u"no error"_s);
    EXPECT_EQ(host.Roles().project->GetCurrentSpec(), u"给排水"_s);
    EXPECT_EQ(host.Roles().project->GetQdDeMode(), SQdDeInfo::BillMode);
}

TEST_F(DefectiveProject, HistoryThatCannotBeReadIsAFalseAnswer)
{
    EmbeddedHost host(m_project.Folder());
    m_project.Sql(ProjectFile, u"DROP TABLE history"_s);
    CArray<SQdInfo> items(1);
    EXPECT_FALSE(host.Roles().libraries->GetQdInfoByQdNum(u"031001001"_s, items));
    EXPECT_EQ(items.size(), 1);
}
