#include "embedded/data/RuleFileCheck.h"

#include "support/TempFolder.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using embedded::CheckRuleFile;

TEST(RuleFileCheck, ReadableAndMissingFilesHaveNoReason)
{
    const test::TempFolder folder;
    EXPECT_FALSE(CheckRuleFile(folder.WriteFile(u"a.xml"_s, "<Rules><a/></Rules>"), u"Rules"_s).has_value());
    EXPECT_FALSE(CheckRuleFile(folder.Path(u"none.xml"_s), u"Rules"_s).has_value());
}

TEST(RuleFileCheck, BrokenFileHasItsLineColumnAndReason)
{
    const test::TempFolder folder;
    const auto reason = CheckRuleFile(folder.WriteFile(u"a.xml"_s, "<Rules>\n <a></b>\n"), u"Rules"_s);
    ASSERT_TRUE(reason.has_value());
    EXPECT_EQ(reason->line, 2);
    EXPECT_GT(reason->column, 1);
    EXPECT_FALSE(reason->text.isEmpty());
    EXPECT_TRUE(CheckRuleFile(folder.WriteFile(u"b.xml"_s, QByteArray()), u"Rules"_s).has_value());
}

TEST(RuleFileCheck, ForeignDocumentElementIsAReasonWithoutAPlace)
{
    const test::TempFolder folder;
    const auto reason = CheckRuleFile(folder.WriteFile(u"a.xml"_s, "<html/>"), u"Rules"_s);
    ASSERT_TRUE(reason.has_value());
    EXPECT_EQ(reason->line, 0);
    EXPECT_TRUE(reason->text.contains(u"Rules"_s));
}
