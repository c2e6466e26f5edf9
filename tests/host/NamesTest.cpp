#include "host/APCellData.h"
#include "host/Installation.h"
#include "host/NvKtDataMng.h"
#include "host/NvKtProfile.h"
#include "host/NvQdInfo.h"
#include "host/NvSysRuleData.h"
#include "host/NvWindowsTool.h"
#include "support/HostGuard.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

using namespace Qt::StringLiterals;
using namespace NvKtDataMng;

// What the names answer is a matter of each host's contract. Here: whom they ask.

namespace {

/// A call of each of the host's names.
std::vector<std::function<void()>> AllNames()
{
    static SNvKtSpecId spec;
    static SNvKtBigCategoryId big;
    static SNvKtSmallCategoryId small;
    static CString text;
    static CStringArray list;
    static CArray<SQdInfo> items;
    static SQdInfo item;
    static RuleCodeStruct rule;
    static int number;
    static CArray<SNvKtBigCategoryId> bigs;
    static CArray<SNvKtSmallCategoryId> smalls;
    return {
        [] { SpecNameToId(text, spec); },
        [] { BigCategoryNameToId(text, big); },
        [] { SmallCategoryNameToId(text, small); },
        [] { NvKtXmlVertion::SetXmlVersion(text, text); },
        [] { CAtt().GetAllSpecNames(list); },
        [] { CAtt().GetAllBigCategoryIdsBySpec(spec, bigs); },
        [] { CAtt().GetAllSmallCategoryIdsByBigCategory(big, smalls); },
        [] { CAtt().GetBigCategoryName(big, text); },
        [] { CAtt().GetSmallCategoryName(small, text); },
        [] { CAtt().GetQdDeMode(); },
        [] { CAtt().GetQdCode(); },
        [] { CAtt().GetDeCode(); },
        [] { CAtt().GetQdDeCode(); },
        [] { CAtt().GetQdFileName(); },
        [] { CAtt().GetDeFileName(); },
        [] { CAtt().GetQdDeFileName(); },
        [] { CAtt().GetQdLocal(); },
        [] { CAtt().GetDeLocal(); },
        [] { CAtt().GetQdDeLocal(); },
        [] { CAtt().GetDeYear(); },
        [] { CAtt().GetQdDeYear(); },
        [] { CAtt().GetDropList(text, list, list); },
        [] { CProj().GetPrjPath(); },
        [] { CProj().GetCurrentSpec(); },
        [] { CProj().GetCurrentSpecId(); },
        [] { CSys().GetIndexPath(text); },
        [] { CSysSmallCategoryMng(small).GetAttributeList(list); },
        [] { CSysSmallCategoryMng(small).GetAttType(); },
        [] { CQdHistoryMng().GetQdInfoByQdNum(text, items); },
        [] { NvKtProfile::GetAppProfile(); },
        [] { NvQdInfo::IBillLib::GetQdInfo(text, item); },
        [] { NvQdInfo::IBillLib::IsInQdk(text); },
        [] { NvQdInfo::IBillLib::GetEnCodeRule(number, number); },
        [] { NvSysRuleData::CFaceSysRule::GetCalItems(text, list, list); },
        [] { NvSysRuleData::CFaceSysRule::GetCalItemInfo(text, rule); },
        [] { APCellData::CellDataFactory::Create(text); },
        [] { NvWindowsTool::MSXMLUtilityPtr(); },
    };
}

TEST(HostNames, RaiseWithoutAHost)
{
    int index = 0;
    for (const auto& call : AllNames())
        EXPECT_THROW(call(), host::NoHostError) << "name " << index++;
}

TEST(HostNames, AnswerWithAHost)
{
    const test::HostGuard guard;
    int index = 0;
    for (const auto& call : AllNames())
        EXPECT_NO_THROW(call()) << "name " << index++;
}

TEST(HostNames, AskTheInnermostHost)
{
    const test::HostGuard outer;
    test::MemoryHost inner;
    inner.Libraries().qdCode = u"inner"_s;
    EXPECT_EQ(CAtt().GetQdCode(), u"QD2013"_s);
    {
        const host::Installation installed = host::Install(inner.Roles());
        EXPECT_EQ(CAtt().GetQdCode(), u"inner"_s);
    }
    EXPECT_EQ(CAtt().GetQdCode(), u"QD2013"_s);
}

TEST(HostNames, EachLibraryTextIsItsOwn)
{
    test::HostGuard guard;
    guard.Host().Libraries() = {u"1"_s, u"2"_s, u"3"_s, u"4"_s,  u"5"_s, u"6"_s,
                                u"7"_s, u"8"_s, u"9"_s, u"10"_s, u"11"_s};
    const CAtt att;
    EXPECT_EQ(att.GetQdCode(), u"1"_s);
    EXPECT_EQ(att.GetDeCode(), u"2"_s);
    EXPECT_EQ(att.GetQdDeCode(), u"3"_s);
    EXPECT_EQ(att.GetQdFileName(), u"4"_s);
    EXPECT_EQ(att.GetDeFileName(), u"5"_s);
    EXPECT_EQ(att.GetQdDeFileName(), u"6"_s);
    EXPECT_EQ(att.GetQdLocal(), u"7"_s);
    EXPECT_EQ(att.GetDeLocal(), u"8"_s);
    EXPECT_EQ(att.GetQdDeLocal(), u"9"_s);
    EXPECT_EQ(att.GetDeYear(), u"10"_s);
    EXPECT_EQ(att.GetQdDeYear(), u"11"_s);
}

TEST(HostNames, ProfileAnswersFolderAndVersion)
{
    const test::HostGuard guard;
    EXPECT_EQ(NvKtProfile::GetAppProfile().GetAppFolder(), guard.AppFolder());
    EXPECT_EQ(NvKtProfile::GetAppProfile().GetVersion().ToString(), u"1.2.3"_s);
    EXPECT_EQ(CNvKtVersion().ToString(), CString());
}

TEST(HostNames, DropListPassesTheExtrasOn)
{
    test::HostGuard guard;
    CStringArray values;
    CStringArray extras = {u"管材"_s, u"x"_s};
    EXPECT_TRUE(CAtt().GetDropList(u"CZ"_s, values, extras));
    EXPECT_EQ(guard.Host().LastExtras(), (CStringArray{u"管材"_s, u"x"_s}));
}

TEST(HostNames, CategoryOfAnAttributeListIsTheOneGivenAtConstruction)
{
    const test::HostGuard guard;
    SNvKtSmallCategoryId pipe;
    SNvKtSmallCategoryId valve;
    ASSERT_TRUE(SmallCategoryNameToId(u"给排水\\管道\\给水管"_s, pipe));
    ASSERT_TRUE(SmallCategoryNameToId(u"给排水\\阀门\\截止阀"_s, valve));
    CStringArray list;
    EXPECT_TRUE(CSysSmallCategoryMng(pipe).GetAttributeList(list));
    EXPECT_EQ(list.size(), 12);
    EXPECT_TRUE(CSysSmallCategoryMng(valve).GetAttributeList(list));
    EXPECT_EQ(list.size(), 4);
    EXPECT_EQ(CSysSmallCategoryMng(pipe).GetAttType(), 1);
    EXPECT_EQ(CSysSmallCategoryMng(valve).GetAttType(), 0);
}

} // namespace
