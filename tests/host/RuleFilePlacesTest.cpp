#include "host/RuleFilePlaces.h"

#include "support/PrintText.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(RuleFilePlaces, FolderAndTemplateStandInTheApplicationFolder)
{
    EXPECT_EQ(host::RuleFolder(u"C:\\p\\app"_s), u"C:\\p\\app\\自动套配置"_s);
    EXPECT_EQ(host::RuleTemplate(u"C:\\p\\app"_s), u"C:\\p\\app\\QdDeConfig.def"_s);
}

TEST(RuleFilePlaces, ConfigurationIsAFileOfItsNameInTheFolder)
{
    EXPECT_EQ(host::RuleFileIn(u"C:\\rules"_s, u"my.rules"_s), u"C:\\rules\\my.rules.xml"_s);
}
