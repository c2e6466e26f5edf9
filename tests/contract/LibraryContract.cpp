#include "HostContract.h"

#include "host/NvKtDataMng.h"
#include "host/NvQdInfo.h"
#include "host/NvSysRuleData.h"

using namespace Qt::StringLiterals;

namespace test {

using NvKtDataMng::CAtt;
using NvKtDataMng::CQdHistoryMng;
using NvQdInfo::IBillLib;
using NvSysRuleData::CFaceSysRule;

namespace {

const CString UnknownText = u"没有"_s;

} // namespace

TEST_P(HostContract, LibraryCodesAndFileNamesAreKnown)
{
    const CAtt att;
    for (const CString& text : {att.GetQdCode(), att.GetDeCode(), att.GetQdDeCode(), att.GetQdFileName(),
                                att.GetDeFileName(), att.GetQdDeFileName()})
        EXPECT_FALSE(text.isEmpty());
}

TEST_P(HostContract, LibraryFileNamesHaveNeitherFolderNorExtension)
{
    const CAtt att;
    for (const CString& text : {att.GetQdFileName(), att.GetDeFileName(), att.GetQdDeFileName()}) {
        EXPECT_FALSE(text.contains(u'\\')) << text.toStdString();
        EXPECT_FALSE(text.contains(u'.')) << text.toStdString();
    }
}

TEST_P(HostContract, RegionsAndYearsAreKnown)
{
    const CAtt att;
    for (const CString& text :
         {att.GetQdLocal(), att.GetDeLocal(), att.GetQdDeLocal(), att.GetDeYear(), att.GetQdDeYear()})
        EXPECT_FALSE(text.isEmpty());
}

TEST_P(HostContract, BillItemIsFilledIn)
{
    SQdInfo info;
    EXPECT_TRUE(IBillLib::GetQdInfo(Sample().BillNumber(), info));
    EXPECT_EQ(info.strNumber, Sample().BillNumber());
    EXPECT_FALSE(info.strName.isEmpty());
    EXPECT_FALSE(info.strUnit.isEmpty());
}

TEST_P(HostContract, UnknownBillNumberIsFalseAndLeavesTheItemAlone)
{
    SQdInfo info;
    info.strName = u"kept"_s;
    EXPECT_FALSE(IBillLib::GetQdInfo(UnknownText, info));
    EXPECT_FALSE(IBillLib::GetQdInfo(CString(), info));
    EXPECT_EQ(info.strName, u"kept"_s);
    EXPECT_EQ(info.strNumber, CString());
}

TEST_P(HostContract, IsInQdkAgreesWithGetQdInfo)
{
    const CString number = Sample().BillNumber();
    EXPECT_TRUE(IBillLib::IsInQdk(number));
    for (const CString& text : {number, UnknownText, CString(), number.chopped(1), number + u'0',
                                u' ' + number, number + u"001"_s, u"%"_s, u"' OR '1'='1"_s}) {
        SQdInfo info;
        EXPECT_EQ(IBillLib::IsInQdk(text), IBillLib::GetQdInfo(text, info)) << text.toStdString();
    }
}

TEST_P(HostContract, CodingRuleIsAnswered)
{
    int length = -100;
    int suffixLength = -100;
    IBillLib::GetEnCodeRule(length, suffixLength);
    EXPECT_EQ(length, Sample().EnCodeRule().first);
    EXPECT_EQ(suffixLength, Sample().EnCodeRule().second);
}

TEST_P(HostContract, HistoryReplacesTheItems)
{
    SQdInfo old;
    old.strNumber = u"old"_s;
    CArray<SQdInfo> items = {old};
    EXPECT_TRUE(CQdHistoryMng().GetQdInfoByQdNum(Sample().HistoryNumber(), items));
    ASSERT_FALSE(items.isEmpty());
    for (const SQdInfo& item : items)
        EXPECT_TRUE(item.strNumber.startsWith(Sample().HistoryNumber())) << item.strNumber.toStdString();
}

TEST_P(HostContract, HistoryOfAnUnknownNumberHoldsNothing)
{
    // A host may know that there is nothing, or not know the number at all.
    SQdInfo old;
    old.strNumber = u"kept"_s;
    CArray<SQdInfo> items = {old};
    const bool known = CQdHistoryMng().GetQdInfoByQdNum(UnknownText, items);
    EXPECT_EQ(items.size(), known ? 0 : 1);
}

TEST_P(HostContract, CalculationItemsReplaceBothListsAndAreDescribed)
{
    CStringArray items = {u"old"_s};
    CStringArray other = {u"old"_s};
    EXPECT_TRUE(CFaceSysRule::GetCalItems(Sample().CalculatedCategory(), items, other));
    EXPECT_FALSE(items.isEmpty());
    EXPECT_FALSE(items.contains(u"old"_s));
    EXPECT_FALSE(other.contains(u"old"_s));
    for (const CString& item : items) {
        RuleCodeStruct info;
        EXPECT_TRUE(CFaceSysRule::GetCalItemInfo(item, info)) << item.toStdString();
        EXPECT_FALSE(info.strRule.isEmpty()) << item.toStdString();
    }
}

TEST_P(HostContract, UnknownCalculationItemIsFalseAndLeavesTheDescriptionAlone)
{
    RuleCodeStruct info;
    info.strRule = u"kept"_s;
    EXPECT_FALSE(CFaceSysRule::GetCalItemInfo(UnknownText, info));
    EXPECT_EQ(info.strRule, u"kept"_s);
}

TEST_P(HostContract, CalculationItemsOfAnUnknownCategoryAreFalseAndLeaveTheListsAlone)
{
    CStringArray items = {u"kept"_s};
    CStringArray other = {u"kept"_s};
    EXPECT_FALSE(CFaceSysRule::GetCalItems(UnknownText, items, other));
    EXPECT_EQ(items, CStringArray{u"kept"_s});
    EXPECT_EQ(other, CStringArray{u"kept"_s});
}

} // namespace test
