#include "embedded/data/project/ProjectFolder.h"

#include "support/TempFolder.h"

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
}
