#include "host/BillNumbering.h"
#include "host/ProjectIni.h"

#include <gtest/gtest.h>

#include <utility>

using namespace Qt::StringLiterals;
using host::BillNumbering;

TEST(BillNumbering, OnlyFourCodingRulesAreKnown)
{
    for (const auto& [length, suffix] :
         {std::pair(-1, 3), std::pair(9, -1), std::pair(8, 2), std::pair(12, 2), std::pair(0, 0)})
        EXPECT_FALSE(BillNumbering::Of(length, suffix)) << length << ' ' << suffix;
    for (const auto& [length, suffix] :
         {std::pair(9, 3), std::pair(10, 2), std::pair(12, 3), std::pair(12, 1)})
        EXPECT_TRUE(BillNumbering::Of(length, suffix)) << length << ' ' << suffix;
}

TEST(BillNumbering, PickedNumberIsABaseOrEndsInASuffix)
{
    const CString picked = u"030801001005"_s;
    EXPECT_EQ(BillNumbering::Of(9, 3)->BaseOf(u"030801001"_s), u"030801001"_s);
    EXPECT_EQ(BillNumbering::Of(9, 3)->SuffixOf(u"030801001"_s), CString());
    EXPECT_EQ(BillNumbering::Of(12, 3)->BaseOf(picked), u"030801001"_s);
    EXPECT_EQ(BillNumbering::Of(12, 3)->SuffixOf(picked), u"005"_s);
    EXPECT_EQ(BillNumbering::Of(12, 1)->BaseOf(picked), u"03080100100"_s);
    EXPECT_EQ(BillNumbering::Of(12, 1)->SuffixOf(picked), u"5"_s);
    EXPECT_TRUE(BillNumbering::Of(12, 3)->KeepsFreeSuffix());
    EXPECT_FALSE(BillNumbering::Of(12, 1)->KeepsFreeSuffix());
}

TEST(BillNumbering, SuffixFollowsTheHighestAndStartsAgainBehindTheLast)
{
    EXPECT_EQ(host::SuffixAfter({}, 3), u"001"_s);
    EXPECT_EQ(host::SuffixAfter({u"030801001007"_s, u"030801001041"_s, u"030801001x"_s}, 3), u"042"_s);
    EXPECT_EQ(host::SuffixAfter({u"030801001999"_s}, 3), u"000"_s);
}

TEST(BillNumbering, FreeSuffixIsKeptAndATakenOneCountedPastProjectAndLibrary)
{
    const CString base = u"030801001"_s;
    const auto inLibrary = [&](const CString& number) { return number == base + u"006"_s; };
    EXPECT_EQ(BillNumbering::FreeSuffix(base, u"5"_s, {}, inLibrary), u"005"_s);
    EXPECT_EQ(BillNumbering::FreeSuffix(base, u"x7y"_s, {base + u"005"_s}, inLibrary), u"x7y"_s);
    EXPECT_EQ(BillNumbering::FreeSuffix(base, u"005"_s, {base + u"005"_s}, inLibrary), u"007"_s);
}

TEST(ProjectIni, StandsBesideTheProjectFile)
{
    EXPECT_EQ(host::ProjectIni(u"C:\\p\\工程.prj"_s), u"C:\\p\\SysRegedit.ini"_s);
}
