#include "embedded/ShippedTable.h"
#include "embedded/TestProject.h"
#include "embedded/data/host/CreateProject.h"
#include "embedded/data/project/ProjectFolder.h"
#include "support/FaultyFileSystem.h"
#include "support/SourceTree.h"

#include <QtCore/QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using embedded::CreateProject;
using embedded::EmbeddedHost;
using embedded::IsProject;
using test::ErrorOf;
using test::TestProject;

namespace {

QByteArray Shipped(const CString& name)
{
    QFile file(test::InSourceTree(u"data/"_s + name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot be read");
}

} // namespace

TEST(ProjectCreation, MakesFolderApplicationFolderAndFiles)
{
    const TestProject project;
    EXPECT_FALSE(IsProject(project.Folder()));
    project.Create();
    EXPECT_TRUE(IsProject(project.Folder()));
    for (const CString& file : {u"project.ktqd"_s, u"SysRegedit.ini"_s, u"app\\catalogue.db"_s})
        EXPECT_TRUE(project.Temp().Exists(TestProject::Below(file))) << file.toStdString();
    for (const CString& file : {u"QdDeConfig.def"_s, u"AttributeInformation.xml"_s})
        EXPECT_EQ(project.Temp().ReadFile(TestProject::Below(u"app\\"_s + file)), Shipped(file));
}

TEST(ProjectCreation, PathsAreTextsOfTheProjectsFiles)
{
    const TestProject project;
    project.Create();
    const EmbeddedHost host(project.Folder());
    EXPECT_EQ(host.AppFolder(), project.Path(u"app"_s));
    EXPECT_EQ(host.ProjectPath(), project.Path(u"project.ktqd"_s));
}

TEST(ProjectCreation, DefaultsAreBillModeAndTheFirstSpecialty)
{
    const TestProject project;
    project.Create();
    EmbeddedHost host(project.Folder());
    EXPECT_EQ(host.Roles().project->GetQdDeMode(), SQdDeInfo::BillMode);
    EXPECT_EQ(host.Roles().project->GetCurrentSpec(), u"给排水"_s);
}

TEST(ProjectCreation, OptionsAreStored)
{
    const TestProject project;
    project.Create({SQdDeInfo::QuotaMode, u"暖通"_s});
    EmbeddedHost host(project.Folder());
    EXPECT_EQ(host.Roles().project->GetQdDeMode(), SQdDeInfo::QuotaMode);
    EXPECT_EQ(host.Roles().project->GetCurrentSpec(), u"暖通"_s);
    EXPECT_EQ(host.Roles().project->GetCurrentSpecId().strSpecId, u"3"_s);
}

TEST(ProjectCreation, NewProjectStartsWithTheShippedHistory)
{
    const TestProject project;
    project.Create();
    EmbeddedHost host(project.Folder());
    CArray<SQdInfo> items;
    ASSERT_TRUE(host.Roles().libraries->GetQdInfoByQdNum(u"031001001"_s, items));
    ASSERT_EQ(items.size(), 2);
    EXPECT_EQ(items.at(0).strNumber, u"031001001001"_s);
    EXPECT_EQ(items.at(1).strNumber, u"031001001002"_s);
    EXPECT_EQ(items.at(0).strUnit, u"m"_s);
    EXPECT_EQ(items.at(0).nUnitCode, 1);
    EXPECT_EQ(items.at(0).nWithAnnex, 1);
}

TEST(ProjectCreation, ExistingFolderIsUsedAndItsFilesStay)
{
    const TestProject project;
    project.Temp().MakeFolder(TestProject::Name());
    project.Temp().WriteFile(TestProject::Below(u"SysRegedit.ini"_s), "[Other]\nkey=1\n");
    project.Create();
    EXPECT_TRUE(IsProject(project.Folder()));
    EXPECT_EQ(project.Temp().ReadFile(TestProject::Below(u"SysRegedit.ini"_s)), "[Other]\nkey=1\n");
}

TEST(ProjectCreation, SecondProjectInTheSameFolderIsRefusedAndTheFirstStays)
{
    const TestProject project;
    project.Create({SQdDeInfo::BillMode, u"电气"_s});
    const CString error = ErrorOf([&] { project.Create({SQdDeInfo::QuotaMode, u"暖通"_s}); });
    EXPECT_TRUE(error.contains(u"已有工程"_s)) << error.toStdString();
    EmbeddedHost host(project.Folder());
    EXPECT_EQ(host.Roles().project->GetCurrentSpec(), u"电气"_s);
    EXPECT_EQ(host.Roles().project->GetQdDeMode(), SQdDeInfo::BillMode);
}

TEST(ProjectCreation, UnknownSpecialtyIsRefusedBeforeAnythingIsMade)
{
    const TestProject project;
    const CString error = ErrorOf([&] { project.Create({SQdDeInfo::BillMode, u"园林"_s}); });
    EXPECT_TRUE(error.contains(u"园林"_s) && error.contains(u"给排水"_s)) << error.toStdString();
    EXPECT_FALSE(project.Temp().Exists(TestProject::Name()));
}

TEST(ProjectCreation, OnlyOneLevelOfFoldersIsMade)
{
    const test::TempFolder folder;
    const CString error = ErrorOf([&] { CreateProject(folder.Native(u"none\\project"_s), {}); });
    EXPECT_TRUE(error.contains(u"无法建立文件夹"_s)) << error.toStdString();
    EXPECT_FALSE(folder.Exists(u"none"_s));
}

TEST(ProjectCreation, FileInPlaceOfTheFolderIsRefused)
{
    const test::TempFolder folder;
    folder.WriteFile(u"taken"_s, "text");
    EXPECT_NE(ErrorOf([&] { CreateProject(folder.Native(u"taken"_s), {}); }), u"no error"_s);
    EXPECT_EQ(folder.ReadFile(u"taken"_s), "text");
}

TEST(ProjectCreation, EmptyPathIsRefusedAndIsNoProject)
{
    EXPECT_TRUE(ErrorOf([] { CreateProject(QString(), {}); }).contains(u"不能为空"_s));
    EXPECT_FALSE(IsProject(QString()));
}

TEST(ProjectCreation, FolderThatCannotBeMadeIsRefused)
{
    const TestProject project;
    test::FaultyFileSystem files;
    files.Inject(test::Fault::RefuseCreateFolder);
    EXPECT_TRUE(ErrorOf([&] { project.Create(); }).contains(u"无法建立文件夹"_s));
    EXPECT_FALSE(IsProject(project.Folder()));
}

TEST(ProjectCreation, FaultAtAnyWritePointLeavesNoProjectAndTheCreationCanBeRepeated)
{
    for (const test::Fault fault : {test::Fault::RefuseOpen, test::Fault::NoRoom, test::Fault::Write,
                                    test::Fault::Resize, test::Fault::Sync}) {
        constexpr int points = 3;
        for (int point = 0; point < points; ++point) {
            const TestProject project;
            test::FaultyFileSystem files;
            files.Inject(fault);
            files.OnlyAt(point);
            const CString error = ErrorOf([&] { project.Create(); });
            EXPECT_NE(error, u"no error"_s) << static_cast<int>(fault) << ' ' << point;
            EXPECT_FALSE(IsProject(project.Folder()));
            files.Heal();
            const int before = files.WritePoints();
            project.Create();
            EXPECT_EQ(files.WritePoints() - before, points);
            EXPECT_NO_THROW(EmbeddedHost(project.Folder()));
        }
    }
}

TEST(ProjectCreation, FolderThatMayNotBeWrittenIsRefused)
{
    if (test::TempFolder::IgnoresPermissions()) GTEST_SKIP() << "this user may write everywhere";
    const TestProject project;
    project.Temp().MakeFolder(TestProject::Name());
    project.Temp().SetReadOnly(TestProject::Name(), true);
    EXPECT_NE(ErrorOf([&] { project.Create(); }), u"no error"_s);
    project.Temp().SetReadOnly(TestProject::Name(), false);
    EXPECT_FALSE(IsProject(project.Folder()));
}
