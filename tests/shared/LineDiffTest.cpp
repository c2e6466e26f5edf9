#include "shared/LineDiff.h"
#include "support/PrintText.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

QStringList Lines(const QString& letters)
{
    return letters.split(u',');
}

} // namespace

TEST(LineDiff, EqualTextsHaveNoChange)
{
    EXPECT_TRUE(shared::CompareLines(Lines(u"a,b"_s), Lines(u"a,b"_s)).isEmpty());
}

TEST(LineDiff, TextsThatDifferOverThousandsOfLinesAreReplacedAsAWhole)
{
    QStringList before{u"same"_s};
    QStringList after{u"same"_s};
    for (int line = 0; line < 6000; ++line) {
        before.append(u"b%1"_s.arg(line));
        after.append(u"a%1"_s.arg(line));
    }
    before.insert(3000, u"common"_s);
    after.insert(3000, u"common"_s);
    const auto changes = shared::CompareLines(before, after);
    ASSERT_EQ(changes.size(), 1);
    EXPECT_EQ(changes[0].line, 2);
    EXPECT_EQ(changes[0].removed, before.mid(1));
    EXPECT_EQ(changes[0].added, after.mid(1));
}

TEST(LineDiff, ChangesApartAreTwo)
{
    const auto changes = shared::CompareLines(Lines(u"a,b,c,d,e"_s), Lines(u"a,B,c,d,x,e"_s));
    ASSERT_EQ(changes.size(), 2);
    EXPECT_EQ(changes[0].line, 2);
    EXPECT_EQ(changes[0].removed, Lines(u"b"_s));
    EXPECT_EQ(changes[0].added, Lines(u"B"_s));
    EXPECT_EQ(changes[1].line, 5);
    EXPECT_TRUE(changes[1].removed.isEmpty());
    EXPECT_EQ(changes[1].added, Lines(u"x"_s));
}

TEST(LineDiff, FewestLinesAreNamed)
{
    const auto changes = shared::CompareLines(Lines(u"x,a,b,c"_s), Lines(u"a,b,c,x"_s));
    ASSERT_EQ(changes.size(), 2);
    EXPECT_EQ(changes[0].removed, Lines(u"x"_s));
    EXPECT_EQ(changes[1].added, Lines(u"x"_s));
}

TEST(LineDiff, DeletionAtTheEndIsFound)
{
    const auto changes = shared::CompareLines(Lines(u"a,b,c"_s), Lines(u"a"_s));
    ASSERT_EQ(changes.size(), 1);
    EXPECT_EQ(changes[0].line, 2);
    EXPECT_EQ(changes[0].removed, Lines(u"b,c"_s));
}

TEST(LineDiff, InsertedElementIsShownWhole)
{
    const auto changes = shared::CompareLines(Lines(u"<l>, <e>,  <a/>, </e>,</l>"_s),
                                              Lines(u"<l>, <e>,  <a/>, </e>, <e>,  <b/>, </e>,</l>"_s));
    ASSERT_EQ(changes.size(), 1);
    EXPECT_EQ(changes[0].line, 5);
    EXPECT_EQ(changes[0].added, Lines(u" <e>,  <b/>, </e>"_s));
}

TEST(LineDiff, InsertedElementIsShownWholeBehindAnEarlierChange)
{
    const auto changes =
        shared::CompareLines(Lines(u"<l n='1'>, <e>,  <a/>, </e>, <z/>,</l>"_s),
                             Lines(u"<l n='2'>, <e>,  <a/>, </e>, <e>,  <b/>, </e>, <z/>,</l>"_s));
    ASSERT_EQ(changes.size(), 2);
    EXPECT_EQ(changes[1].line, 5);
    EXPECT_EQ(changes[1].added, Lines(u" <e>,  <b/>, </e>"_s));
}
