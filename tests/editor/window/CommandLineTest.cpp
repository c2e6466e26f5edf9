#include "editor/window/CommandLine.h"

#include "support/PrintText.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using editor::CommandLine;

TEST(EditorCommandLine, WithoutWordsAsksForNothing)
{
    const CommandLine line = CommandLine::Parse({});
    EXPECT_EQ(line.project, QString());
    EXPECT_FALSE(line.wizard.has_value());
    EXPECT_FALSE(line.sample);
    EXPECT_TRUE(line.allowBack);
}

TEST(EditorCommandLine, TakesProjectAndWizard)
{
    const CommandLine line =
        CommandLine::Parse({u"工程"_s, u"--wizard"_s, u"规则"_s, u"--note"_s, u"看"_s, u"--no-back"_s});
    EXPECT_EQ(line.project, u"工程"_s);
    EXPECT_EQ(line.wizard.value(), u"规则"_s);
    EXPECT_EQ(line.note, u"看"_s);
    EXPECT_FALSE(line.allowBack);
}

class WrongWords : public ::testing::TestWithParam<QStringList>
{
};

TEST_P(WrongWords, AreRefused)
{
    EXPECT_THROW(CommandLine::Parse(GetParam()), editor::UsageError);
}

INSTANTIATE_TEST_SUITE_P(EditorCommandLine, WrongWords,
                         ::testing::Values(QStringList{u"--unknown"_s}, QStringList{u"--wizard"_s},
                                           QStringList{u"a"_s, u"b"_s}, QStringList{u"--note"_s, u"x"_s},
                                           QStringList{u"--no-back"_s}));
