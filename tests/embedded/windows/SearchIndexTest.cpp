#include "embedded/windows/SearchIndex.h"

#include "support/PrintText.h"

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

embedded::SearchIndex Filled()
{
    embedded::SearchIndex index;
    index.Add(u"031001001"_s, u"镀锌钢管 DN15"_s);
    index.Add(u"031001002"_s, u"无缝钢管 dn25"_s);
    index.Add(u"031002001"_s, u"管道支架"_s);
    return index;
}

TEST(SearchIndex, FindsWordsInNumberAndNameInAnyOrder)
{
    EXPECT_THAT(Filled().Find(u"钢管 0310010"_s), ElementsAre(0, 1));
    EXPECT_THAT(Filled().Find(u"dn15 镀锌"_s), ElementsAre(0));
    EXPECT_THAT(Filled().Find(u"支架"_s), ElementsAre(2));
}

TEST(SearchIndex, NeedsEveryWord)
{
    EXPECT_THAT(Filled().Find(u"钢管 支架"_s), IsEmpty());
}

TEST(SearchIndex, LetterCaseAndWidthDoNotCount)
{
    EXPECT_THAT(Filled().Find(u"ＤＮ15"_s), ElementsAre(0));
    EXPECT_THAT(Filled().Find(u"DN25"_s), ElementsAre(1));
}

TEST(SearchIndex, BlanksFindEverythingAndOnlySeparateWords)
{
    EXPECT_THAT(Filled().Find(u"  　"_s), ElementsAre(0, 1, 2));
    EXPECT_THAT(Filled().Find(u" 无缝　 钢管 "_s), ElementsAre(1));
}

TEST(SearchIndex, WordDoesNotReachFromNumberIntoName)
{
    EXPECT_THAT(Filled().Find(u"031001001镀锌"_s), IsEmpty());
    EXPECT_THAT(Filled().Find(u"1镀"_s), IsEmpty());
}

TEST(SearchIndex, LooksOnlyAtItsScopeAndKeepsItsOrder)
{
    EXPECT_THAT(Filled().Find({}, std::vector{2, 0}), ElementsAre(2, 0));
    EXPECT_THAT(Filled().Find(u"钢管"_s, std::vector{2, 1}), ElementsAre(1));
    EXPECT_THAT(Filled().Find(u"钢管"_s, std::vector<int>()), IsEmpty());
}

TEST(SearchIndex, IsEmptyAfterClear)
{
    embedded::SearchIndex index = Filled();
    index.Clear();
    EXPECT_THAT(index.Find({}), IsEmpty());
}

} // namespace
