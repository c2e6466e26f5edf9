#include "presenter/PickedItems.h"

#include "support/HostGuard.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(PickedItems, FormulaOfACategoryIsTheRuleOfItsFirstCalculationItem)
{
    const test::HostGuard host;
    EXPECT_EQ(CategoryFormula(u"给排水\\管道\\给水管"_s), u"AM_Length"_s);
    EXPECT_EQ(CategoryFormula(u"给排水\\管道\\排水管"_s), std::nullopt);
}

TEST(PickedItems, BillRecordHasTheNumberAndTheLibraryThatAreGiven)
{
    SQdInfo info;
    info.strNumber = u"031001001"_s;
    info.strName = u"镀锌钢管"_s;
    info.strUnit = u"m"_s;
    info.nUnitCode = 5;
    info.nWithAnnex = 2;
    QdStruct expected;
    expected.strQdId = u"031001001001"_s;
    expected.strName = u"镀锌钢管"_s;
    expected.strUnit = u"m"_s;
    expected.strUnitCode = u"5"_s;
    expected.strQdCode = u"QD2013"_s;
    expected.strFormula = u"L"_s;
    expected.strAnnex = u"是"_s;
    EXPECT_EQ(RecordOf(info, u"031001001001"_s, u"QD2013"_s, u"L"_s), expected);
}

TEST(PickedItems, RuleOfTheItemComesBeforeTheFormula)
{
    const SPickedDe picked{10, 0, u"10-1"_s, u"安装"_s, u"10m"_s, u"N"_s};
    DeStruct expected;
    expected.strDeId = u"10-1"_s;
    expected.strName = u"安装"_s;
    expected.strUnit = u"10m"_s;
    expected.strUnitCode = u"10"_s;
    expected.strDeCode = u"DE"_s;
    expected.strFormula = u"N"_s;
    expected.strAnnex = u"否"_s;
    EXPECT_EQ(RecordOf(picked, u"DE"_s, u"L"_s), expected);
}

TEST(PickedItems, UnitCodeIsTheLeadingNumberOfTheUnitAndAtLeastOne)
{
    EXPECT_EQ(UnitCodeOf(u" 10m "_s), u"10"_s);
    EXPECT_EQ(UnitCodeOf(u"m"_s), u"1"_s);
    EXPECT_EQ(UnitCodeOf(u"0.5m"_s), u"1"_s);
    EXPECT_EQ(UnitCodeOf(u"-3m"_s), u"1"_s);
}
