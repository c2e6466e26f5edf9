#include "docs/Documents.h"

#include "support/PrintText.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using test::SplitWords;

TEST(SplitWords, QuotesHoldBlanksAndBackslashesTogether)
{
    EXPECT_EQ(SplitWords(u"ktqdde show --category '给排水\\管 道' \"a b\""_s),
              QStringList({u"ktqdde"_s, u"show"_s, u"--category"_s, u"给排水\\管 道"_s, u"a b"_s}));
}

TEST(SplitWords, ACommentEndsTheLine)
{
    EXPECT_EQ(SplitWords(u"ktqdde show  # shows 'all"_s), QStringList({u"ktqdde"_s, u"show"_s}));
    EXPECT_EQ(SplitWords(u"ktqdde show a#b"_s), QStringList({u"ktqdde"_s, u"show"_s, u"a#b"_s}));
    EXPECT_TRUE(SplitWords(u"# nothing"_s).isEmpty());
}

TEST(SplitWords, AnEmptyQuotedWordIsAWord)
{
    EXPECT_EQ(SplitWords(u"ktqdde ''"_s), QStringList({u"ktqdde"_s, u""_s}));
}

// The two README files show the programs at work; a convention that finds nothing there tests nothing.
TEST(Document, TheReadmesShowCommandsFilesAndPictures)
{
    for (const QString& path : {u"README.md"_s, u"README.zh-CN.md"_s}) {
        const test::Document readme(path);
        EXPECT_GE(readme.Commands().size(), 5) << path.toStdString();
        EXPECT_EQ(readme.Files().size(), 1) << path.toStdString();
        EXPECT_GE(readme.Pictures().size(), 2) << path.toStdString();
        EXPECT_GE(readme.Links().size(), 5) << path.toStdString();
    }
}
