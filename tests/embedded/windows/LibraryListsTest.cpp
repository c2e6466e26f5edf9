#include "embedded/windows/LibraryLists.h"

#include "support/PrintText.h"

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using ::testing::ElementsAre;

namespace {

SQdInfo Bill(const CString& number)
{
    SQdInfo bill;
    bill.nUnitCode = 10;
    bill.nWithAnnex = 1;
    bill.strNumber = number;
    bill.strName = u"名"_s + number;
    bill.strUnit = u"10m"_s;
    bill.strCalRule = u"长度"_s;
    return bill;
}

embedded::LibraryContents Contents()
{
    embedded::LibraryContents contents;
    contents.bills = {{u"03"_s, u"安装"_s, {}}, {u"03\\0301"_s, u"机械"_s, {Bill(u"1"_s), Bill(u"2"_s)}}};
    const SPickedDe record{5, 1, u"示1-1-1"_s, u"名"_s, u"m"_s, u"规则"_s};
    contents.quotas = {{u"示1"_s, u"一"_s, {{{1, 0, u"示1-0"_s, {}, {}, {}}, {u"2"_s}}}},
                       {u"示1-1"_s, u"一一"_s, {{record, {u"1"_s, u"2"_s}}}},
                       {u"示2-1-3"_s, u"无上级"_s, {}},
                       {u"示1-7-2"_s, u"隔级"_s, {}}};
    return contents;
}

TEST(LibraryLists, ChaptersOfBillsHaveIndexPositionsAsKeys)
{
    const auto chapters = embedded::BillChapters(Contents());
    ASSERT_EQ(chapters.size(), 2u);
    EXPECT_EQ(chapters[0].key + u'|' + chapters[0].parent, u"03|"_s);
    EXPECT_EQ(chapters[1].key + u'|' + chapters[1].parent, u"03.0301|03"_s);
    EXPECT_EQ(chapters[1].code + u' ' + chapters[1].title, u"0301 机械"_s);
}

TEST(LibraryLists, BillsCarryAllTheirFieldsAndTheirChapter)
{
    const auto items = embedded::BillItems(Contents());
    ASSERT_EQ(items.size(), 2u);
    EXPECT_EQ((CStringArray{items[1].number, items[1].name, items[1].unit, items[1].calRule}),
              (CStringArray{u"2"_s, u"名2"_s, u"10m"_s, u"长度"_s}));
    EXPECT_THAT((std::vector{items[1].unitCode, items[1].withAnnex, items[1].chapter}),
                ElementsAre(10, 1, 1));
}

TEST(LibraryLists, QuotaChapterStandsUnderTheNextShorterCodeThatExists)
{
    CStringArray parents;
    for (const embedded::Chapter& chapter : embedded::QuotaChapters(Contents()))
        parents.append(chapter.parent);
    EXPECT_EQ(parents, (CStringArray{{}, u"示1"_s, {}, u"示1"_s}));
}

TEST(LibraryLists, QuotasAreFoundByTheBillsTheyStandUnder)
{
    const auto items = embedded::QuotaItems(Contents());
    ASSERT_EQ(items.size(), 2u);
    EXPECT_EQ((CStringArray{items[1].number, items[1].name, items[1].unit, items[1].calRule}),
              (CStringArray{u"示1-1-1"_s, u"名"_s, u"m"_s, u"规则"_s}));
    EXPECT_THAT((std::vector{items[1].unitCode, items[1].withAnnex, items[1].chapter}), ElementsAre(5, 1, 1));
    const auto quotas = embedded::QuotasOfBills(Contents());
    EXPECT_THAT(quotas.value(u"1"_s), ElementsAre(1));
    EXPECT_THAT(quotas.value(u"2"_s), ElementsAre(0, 1));
    EXPECT_THAT(quotas.value(u"3"_s), ElementsAre());
}

} // namespace
