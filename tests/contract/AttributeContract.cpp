#include "HostContract.h"

#include "host/APCellData.h"
#include "host/NvKtDataMng.h"

using namespace Qt::StringLiterals;

namespace test {

using APCellData::CellDataFactory;
using NvKtDataMng::CAtt;
using NvKtDataMng::CSysSmallCategoryMng;

namespace {

const CString Unknown = u"NO_SUCH_CODE"_s;

/// A value source, given back when the test is done with it.
using CellPtr = std::unique_ptr<CellData, decltype(&CellDataFactory::Release)>;

CellPtr MakeCell(const CString& code)
{
    return {CellDataFactory::Create(code), &CellDataFactory::Release};
}

} // namespace

TEST_P(HostContract, AttributeListsHaveFourTextsForEachAttribute)
{
    for (const auto& small : AllSmalls()) {
        CStringArray list;
        EXPECT_TRUE(CSysSmallCategoryMng(small.id).GetAttributeList(list)) << small.fullName.toStdString();
        ASSERT_EQ(list.size() % 4, 0) << small.fullName.toStdString();
        for (qsizetype i = 0; i < list.size(); i += 4) {
            EXPECT_FALSE(list[i + 1].isEmpty()) << small.fullName.toStdString();
            EXPECT_FALSE(list[i + 3].isEmpty()) << small.fullName.toStdString();
        }
    }
}

TEST_P(HostContract, AttributeListReplacesWhatTheArgumentHeld)
{
    CStringArray list = {u"old"_s};
    EXPECT_TRUE(CSysSmallCategoryMng(SampleId()).GetAttributeList(list));
    EXPECT_GE(list.size(), 4);
    EXPECT_FALSE(list.contains(u"old"_s));
}

TEST_P(HostContract, AttributeListIsStable)
{
    CStringArray first;
    CStringArray second;
    EXPECT_TRUE(CSysSmallCategoryMng(SampleId()).GetAttributeList(first));
    EXPECT_TRUE(CSysSmallCategoryMng(SampleId()).GetAttributeList(second));
    EXPECT_EQ(first, second);
}

TEST_P(HostContract, AttributeListOfAnUnknownCategoryIsFalseAndLeavesTheListAlone)
{
    CStringArray list = {u"kept"_s};
    EXPECT_FALSE(CSysSmallCategoryMng({u"987654"_s, u"987654"_s, u"987654"_s}).GetAttributeList(list));
    EXPECT_FALSE(CSysSmallCategoryMng({}).GetAttributeList(list));
    EXPECT_EQ(list, CStringArray{u"kept"_s});
}

TEST_P(HostContract, AttTypeOfTheSampleIsAnswered)
{
    EXPECT_EQ(CSysSmallCategoryMng(SampleId()).GetAttType(), Sample().AttType());
}

TEST_P(HostContract, SampleCodesBelongToTheSampleCategory)
{
    CStringArray list;
    EXPECT_TRUE(CSysSmallCategoryMng(SampleId()).GetAttributeList(list));
    CStringArray codes;
    for (qsizetype i = 3; i < list.size(); i += 4)
        codes.append(list[i]);
    EXPECT_TRUE(codes.contains(Sample().DropListCode()));
    EXPECT_TRUE(codes.contains(Sample().OwnValuesCode()));
}

TEST_P(HostContract, DropListReplacesTheValues)
{
    CStringArray values = {u"old"_s};
    CStringArray extras;
    EXPECT_TRUE(CAtt().GetDropList(Sample().DropListCode(), values, extras));
    EXPECT_FALSE(values.isEmpty());
    EXPECT_FALSE(values.contains(u"old"_s));
}

TEST_P(HostContract, DropListOfAnUnknownCodeIsFalseAndLeavesTheValuesAlone)
{
    CStringArray values = {u"kept"_s};
    CStringArray extras;
    EXPECT_FALSE(CAtt().GetDropList(Unknown, values, extras));
    EXPECT_FALSE(CAtt().GetDropList(CString(), values, extras));
    EXPECT_EQ(values, CStringArray{u"kept"_s});
}

TEST_P(HostContract, ValueSourceOfADropListHasTypeNine)
{
    const CellPtr cell = MakeCell(Sample().DropListCode());
    ASSERT_TRUE(cell);
    EXPECT_EQ(cell->GetType(), 9);
}

TEST_P(HostContract, ValueSourceWithOwnValuesGivesThem)
{
    const CellPtr cell = MakeCell(Sample().OwnValuesCode());
    ASSERT_TRUE(cell);
    EXPECT_NE(cell->GetType(), 9);
    EXPECT_FALSE(cell->GetValues().isEmpty());
}

TEST_P(HostContract, UnknownCodeHasNoValueSource)
{
    EXPECT_EQ(CellDataFactory::Create(Unknown), nullptr);
    EXPECT_EQ(CellDataFactory::Create(CString()), nullptr);
    CellDataFactory::Release(nullptr);
}

TEST_P(HostContract, EveryTypeNineHasADropList)
{
    for (const auto& small : AllSmalls()) {
        CStringArray list;
        EXPECT_TRUE(CSysSmallCategoryMng(small.id).GetAttributeList(list));
        for (qsizetype i = 0; i + 3 < list.size(); i += 4) {
            const CellPtr cell = MakeCell(list[i + 3]);
            if (!cell || cell->GetType() != 9) continue;
            CStringArray values;
            CStringArray extras = {list[i + 2]};
            EXPECT_TRUE(CAtt().GetDropList(list[i + 3], values, extras)) << list[i + 3].toStdString();
        }
    }
}

} // namespace test
