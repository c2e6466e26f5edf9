#include "embedded/data/project/ProjectFolder.h"

#include "embedded/TestProject.h"
#include "support/FaultyFileSystem.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using embedded::ProjectFolder;

TEST(ProjectFolder, RuleFilesAreXmlFilesButThoseThatTheModuleMakesAnew)
{
    const test::TempFolder folder;
    const ProjectFolder project(folder.Native(u"project"_s));
    EXPECT_TRUE(project.IsRuleFile(project.RuleFolder() + u"\\a.xml"_s));
    EXPECT_TRUE(project.IsRuleFile(project.RuleFolder().toUpper() + u"\\A.XML"_s));
    EXPECT_TRUE(project.IsRuleFile(project.Path() + u"\\a.xml"_s));
    EXPECT_TRUE(project.IsRuleFile(u"C:\\elsewhere\\a.xml"_s));
    EXPECT_FALSE(project.IsRuleFile(project.AppFolder() + u"\\AttrConfig.xml"_s));
    EXPECT_FALSE(project.IsRuleFile(project.RuleFolder() + u"\\a.def"_s));
    EXPECT_FALSE(project.IsRuleFile(project.Path() + u"\\history\\drafts\\one\\base.xml"_s));
    EXPECT_TRUE(project.IsRuleFile(project.Path() + u"\\history\\a.xml"_s));
}

TEST(ProjectFolder, ProjectThatCannotBeReadIsToldAsSuchAndNotAsNone)
{
    const test::TestProject place;
    place.Put();
    test::FaultyFileSystem files;
    files.Inject(test::Fault::RefuseRead);
    EXPECT_TRUE(embedded::IsProject(place.Folder()));
    const CString error = test::ErrorOf([&] { const embedded::EmbeddedHost host(place.Folder()); });
    EXPECT_TRUE(error.startsWith(u"工程文件读不了："_s)) << error.toStdString();
    EXPECT_TRUE(error.contains(u"project.ktqd"_s)) << error.toStdString();
    const CString second = test::ErrorOf([&] { place.Create(); });
    EXPECT_TRUE(second.contains(u"已有工程"_s)) << second.toStdString();
}

TEST(ProjectFolder, FolderWithoutAProjectIsNone)
{
    const test::TempFolder folder;
    folder.WriteFile(u"project.ktqd"_s, QByteArray());
    EXPECT_FALSE(embedded::IsProject(folder.Native({})));
    const CString error = test::ErrorOf([&] { const embedded::EmbeddedHost host(folder.Native({})); });
    EXPECT_TRUE(error.contains(u"此文件夹中没有工程"_s)) << error.toStdString();
}
