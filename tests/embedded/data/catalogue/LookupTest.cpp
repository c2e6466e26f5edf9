#include "embedded/ShippedTable.h"
#include "embedded/TestProject.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace Qt::StringLiterals;
using embedded::EmbeddedHost;
using test::ShippedRows;
using test::ShippedTable;
using test::TableRow;

namespace {

/// One project, opened.
class Lookup : public ::testing::Test
{
protected:
    static const test::TestProject& Created(const test::TestProject& project)
    {
        project.Put();
        return project;
    }
    SNvKtSmallCategoryId Id(const CString& fullName)
    {
        SNvKtSmallCategoryId id;
        EXPECT_TRUE(m_roles.categories->SmallCategoryNameToId(fullName, id)) << fullName.toStdString();
        return id;
    }

    test::TestProject m_project;
    EmbeddedHost m_host{Created(m_project).Folder()};
    host::Roles m_roles = m_host.Roles();
};

} // namespace

TEST_F(Lookup, WindowsAreLeftOut)
{
    EXPECT_EQ(m_roles.windows, nullptr);
}

TEST_F(Lookup, WalkFromSpecialtiesDownMeetsEveryCategoryInTheOrderOfTheTables)
{
    CStringArray walked;
    CStringArray specialties;
    ASSERT_TRUE(m_roles.categories->GetAllSpecNames(specialties));
    for (const CString& specialty : specialties) {
        SNvKtSpecId spec;
        ASSERT_TRUE(m_roles.categories->SpecNameToId(specialty, spec));
        CArray<SNvKtBigCategoryId> bigs;
        ASSERT_TRUE(m_roles.categories->GetAllBigCategoryIdsBySpec(spec, bigs));
        for (const SNvKtBigCategoryId& big : bigs) {
            CString bigName;
            ASSERT_TRUE(m_roles.categories->GetBigCategoryName(big, bigName));
            CArray<SNvKtSmallCategoryId> smalls;
            ASSERT_TRUE(m_roles.categories->GetAllSmallCategoryIdsByBigCategory(big, smalls));
            for (const SNvKtSmallCategoryId& small : smalls) {
                CString name;
                ASSERT_TRUE(m_roles.categories->GetSmallCategoryName(small, name));
                walked.append(specialty + u'\\' + bigName + u'\\' + name);
            }
        }
    }
    CStringArray expected;
    for (const TableRow& row : ShippedTable(u"small_categories"_s))
        expected.append(test::FullName(row));
    EXPECT_EQ(walked, expected);
}

TEST_F(Lookup, RecordsHoldTheIdsOfAllLevels)
{
    const SNvKtSmallCategoryId id = Id(u"电气\\电缆桥架\\托盘"_s);
    EXPECT_EQ(id.strSpecId, u"2"_s);
    EXPECT_EQ(id.strBigCategoryId, u"202"_s);
    EXPECT_EQ(id.strSmallCategoryId, u"20202"_s);
    SNvKtBigCategoryId big;
    ASSERT_TRUE(m_roles.categories->BigCategoryNameToId(u"电气\\电缆桥架"_s, big));
    EXPECT_EQ(big.strSpecId, u"2"_s);
    EXPECT_EQ(big.strBigCategoryId, u"202"_s);
}

TEST_F(Lookup, NamesAreLookedUpExactlyAndAMissLeavesTheOutputAlone)
{
    SNvKtSmallCategoryId id{u"a"_s, u"b"_s, u"c"_s};
    for (const CString& name : {u"电气\\电缆桥架\\托盘\\"_s, u"托盘"_s, u"电气\\电缆桥架\\托"_s, CString()})
        EXPECT_FALSE(m_roles.categories->SmallCategoryNameToId(name, id)) << name.toStdString();
    EXPECT_EQ(id.strSmallCategoryId, u"c"_s);
    SNvKtBigCategoryId big{u"a"_s, u"b"_s};
    EXPECT_FALSE(m_roles.categories->BigCategoryNameToId(u"电缆桥架"_s, big));
    EXPECT_EQ(big.strBigCategoryId, u"b"_s);
    SNvKtSpecId spec{u"a"_s};
    EXPECT_FALSE(m_roles.categories->SpecNameToId(u"园林"_s, spec));
    EXPECT_EQ(spec.strSpecId, u"a"_s);
}

TEST_F(Lookup, UnknownIdsAreMisses)
{
    CString name = u"kept"_s;
    EXPECT_FALSE(m_roles.categories->GetBigCategoryName({u"1"_s, u"999"_s}, name));
    EXPECT_FALSE(m_roles.categories->GetSmallCategoryName({u"1"_s, u"101"_s, u"999"_s}, name));
    EXPECT_EQ(name, u"kept"_s);
    CArray<SNvKtBigCategoryId> bigs(3);
    EXPECT_FALSE(m_roles.categories->GetAllBigCategoryIdsBySpec({u"99"_s}, bigs));
    EXPECT_EQ(bigs.size(), 3);
    CArray<SNvKtSmallCategoryId> smalls(2);
    EXPECT_FALSE(m_roles.categories->GetAllSmallCategoryIdsByBigCategory({u"1"_s, u"999"_s}, smalls));
    EXPECT_EQ(smalls.size(), 2);
    CStringArray list{u"kept"_s};
    EXPECT_FALSE(m_roles.attributes->GetAttributeList({u"1"_s, u"101"_s, u"999"_s}, list));
    EXPECT_EQ(list.size(), 1);
}

TEST_F(Lookup, IndexPathNeedsTheTrailingBackslashAndIsEmptyWhereThereIsNone)
{
    EXPECT_EQ(m_roles.categories->GetIndexPath(u"给排水\\管道\\给水管\\"_s), u"0310\\031001"_s);
    EXPECT_EQ(m_roles.categories->GetIndexPath(u"给排水\\管道\\给水管"_s), CString());
    EXPECT_EQ(m_roles.categories->GetIndexPath(u"给排水\\管道\\"_s), CString());
    EXPECT_EQ(m_roles.categories->GetIndexPath(u"建筑\\墙板\\墙\\"_s), CString());
    EXPECT_EQ(m_roles.categories->GetIndexPath(CString()), CString());
}

TEST_F(Lookup, AttributeListsHoldFourTextsPerAttributeInTheOrderOfTheTable)
{
    QHash<CString, CStringArray> expected;
    for (const TableRow& row : ShippedTable(u"attributes"_s)) {
        expected[row[u"category"_s]] << row[u"group_name"_s] << row[u"display_name"_s] << row[u"extra"_s]
                                     << row[u"code"_s];
    }
    for (auto category = expected.cbegin(); category != expected.cend(); ++category) {
        CStringArray list{u"replaced"_s};
        ASSERT_TRUE(m_roles.attributes->GetAttributeList(Id(category.key()), list));
        EXPECT_EQ(list, *category) << category.key().toStdString();
    }
}

TEST_F(Lookup, AttTypeIsThatOfTheTableAndZeroForAnUnknownCategory)
{
    EXPECT_EQ(m_roles.attributes->GetAttType(Id(u"给排水\\管道\\给水管"_s)), 1);
    EXPECT_EQ(m_roles.attributes->GetAttType(Id(u"给排水\\阀门附件\\阀门"_s)), 0);
    EXPECT_EQ(m_roles.attributes->GetAttType({u"1"_s, u"101"_s, u"999"_s}), 0);
}

TEST_F(Lookup, DropListIsTheOneThatTheExtrasName)
{
    CStringArray values;
    CStringArray extras{u"给排水系统"_s, u"排水管材"_s};
    ASSERT_TRUE(m_roles.attributes->GetDropList(u"AM_Material"_s, values, extras));
    EXPECT_TRUE(values.contains(u"PVC-U排水管"_s));
    EXPECT_FALSE(values.contains(u"PPR管"_s));
    EXPECT_EQ(extras, (CStringArray{u"给排水系统"_s, u"排水管材"_s}));
}

TEST_F(Lookup, DropListWithoutMatchingExtraIsTheFirstOfItsCode)
{
    CStringArray values;
    CStringArray extras;
    ASSERT_TRUE(m_roles.attributes->GetDropList(u"AM_Material"_s, values, extras));
    EXPECT_TRUE(values.contains(u"PPR管"_s));
}

TEST_F(Lookup, DropListOfAnUnknownCodeIsAMiss)
{
    CStringArray values{u"kept"_s};
    CStringArray extras;
    EXPECT_FALSE(m_roles.attributes->GetDropList(u"AM_Unknown"_s, values, extras));
    EXPECT_FALSE(m_roles.attributes->GetDropList(u"AM_Width"_s, values, extras));
    EXPECT_EQ(values, CStringArray{u"kept"_s});
}

TEST_F(Lookup, CellDataOfKindNineLeavesTheValuesToTheDropList)
{
    const auto cell = m_roles.attributes->CreateCellData(u"AM_Material"_s);
    ASSERT_NE(cell, nullptr);
    EXPECT_EQ(cell->GetType(), 9);
    EXPECT_TRUE(cell->GetValues().isEmpty());
}

TEST_F(Lookup, CellDataOfDerivedCodesHasValuesOfItsOwn)
{
    for (const CString& code :
         {u"AM_Perimeter"_s, u"AM_LongEdge"_s, u"AM_Diameter"_s, u"AM_SemiPerimeter"_s, u"AM_SPerimeter"_s}) {
        const auto cell = m_roles.attributes->CreateCellData(code);
        ASSERT_NE(cell, nullptr) << code.toStdString();
        EXPECT_NE(cell->GetType(), 9);
        EXPECT_FALSE(cell->GetValues().isEmpty()) << code.toStdString();
    }
    EXPECT_EQ(m_roles.attributes->CreateCellData(u"AM_Unknown"_s), nullptr);
}

TEST_F(Lookup, BillItemsAreFoundWithAllTheirFields)
{
    SQdInfo info;
    ASSERT_TRUE(m_roles.libraries->GetQdInfo(u"030702001"_s, info));
    EXPECT_EQ(info.strNumber, u"030702001"_s);
    EXPECT_EQ(info.strName, u"碳钢通风管道"_s);
    EXPECT_EQ(info.strUnit, u"m2"_s);
    EXPECT_EQ(info.strCalRule, u"风管展开面积"_s);
    EXPECT_EQ(info.nUnitCode, 1);
    EXPECT_EQ(info.nWithAnnex, 1);
    EXPECT_TRUE(m_roles.libraries->IsInQdk(u"030702001"_s));
}

TEST_F(Lookup, NumberThatIsNotInTheLibraryIsAMiss)
{
    SQdInfo info;
    info.strName = u"kept"_s;
    for (const CString& number : {u"030702001001"_s, u"03070200"_s, u"999999999"_s, CString()}) {
        EXPECT_FALSE(m_roles.libraries->GetQdInfo(number, info)) << number.toStdString();
        EXPECT_FALSE(m_roles.libraries->IsInQdk(number)) << number.toStdString();
    }
    EXPECT_EQ(info.strName, u"kept"_s);
}

TEST_F(Lookup, CodingRuleIsNineAndThree)
{
    int length = 0;
    int suffixLength = 0;
    m_roles.libraries->GetEnCodeRule(length, suffixLength);
    EXPECT_EQ(length, 9);
    EXPECT_EQ(suffixLength, 3);
}

TEST_F(Lookup, FirstLibrariesAnswerInTheirRoles)
{
    QHash<CString, TableRow> tags;
    for (const TableRow& row : ShippedTable(u"libraries"_s)) {
        if (!tags.contains(row[u"role"_s])) tags.insert(row[u"role"_s], row);
    }
    host::ILibraries& libraries = *m_roles.libraries;
    EXPECT_EQ(libraries.GetQdCode(), tags[u"qd"_s][u"code"_s]);
    EXPECT_EQ(libraries.GetDeCode(), tags[u"de"_s][u"code"_s]);
    EXPECT_EQ(libraries.GetQdDeCode(), tags[u"qd_de"_s][u"code"_s]);
    EXPECT_EQ(libraries.GetQdFileName(), tags[u"qd"_s][u"file_name"_s]);
    EXPECT_EQ(libraries.GetDeFileName(), tags[u"de"_s][u"file_name"_s]);
    EXPECT_EQ(libraries.GetQdDeFileName(), tags[u"qd_de"_s][u"file_name"_s]);
    EXPECT_EQ(libraries.GetQdLocal(), tags[u"qd"_s][u"local"_s]);
    EXPECT_EQ(libraries.GetDeLocal(), tags[u"de"_s][u"local"_s]);
    EXPECT_EQ(libraries.GetQdDeLocal(), tags[u"qd_de"_s][u"local"_s]);
    EXPECT_EQ(libraries.GetDeYear(), tags[u"de"_s][u"year"_s]);
    EXPECT_EQ(libraries.GetQdDeYear(), tags[u"qd_de"_s][u"year"_s]);
}

TEST_F(Lookup, NumberWithoutHistoryGivesAnEmptyList)
{
    CArray<SQdInfo> items(2);
    EXPECT_TRUE(m_roles.libraries->GetQdInfoByQdNum(u"031001002"_s, items));
    EXPECT_TRUE(items.isEmpty());
}

TEST_F(Lookup, CalculationItemsAreSplitIntoMainAndOther)
{
    CStringArray items{u"replaced"_s};
    CStringArray other{u"replaced"_s};
    ASSERT_TRUE(m_roles.calculation->GetCalItems(u"给排水\\管道\\给水管"_s, items, other));
    EXPECT_EQ(items, CStringArray{u"管道长度"_s});
    EXPECT_EQ(other, (CStringArray{u"管件数量"_s, u"刷油面积"_s, u"管道绝热体积"_s}));
    EXPECT_FALSE(m_roles.calculation->GetCalItems(u"给排水\\管道"_s, items, other));
    EXPECT_EQ(items, CStringArray{u"管道长度"_s});
}

TEST_F(Lookup, CalculationItemHasItsRule)
{
    RuleCodeStruct info;
    ASSERT_TRUE(m_roles.calculation->GetCalItemInfo(u"单线长度"_s, info));
    EXPECT_EQ(info.strName, u"单线长度"_s);
    EXPECT_EQ(info.strCode, u"WireLength"_s);
    EXPECT_EQ(info.strRule, u"(配管长度+预留长度)×导线根数"_s);
    EXPECT_FALSE(m_roles.calculation->GetCalItemInfo(u"无"_s, info));
    EXPECT_EQ(info.strName, u"单线长度"_s);
}

TEST_F(Lookup, ProfileGivesTheVersionOfTheProgram)
{
    EXPECT_EQ(m_roles.profile->GetVersion().ToString(), QString::fromUtf8(KTQDDE_EXPECTED_VERSION));
    EXPECT_EQ(m_roles.profile->GetAppFolder(), m_host.AppFolder());
}

TEST_F(Lookup, ContentsHoldEveryItemInItsSection)
{
    const embedded::LibraryContents& contents = m_host.Contents();
    std::size_t bills = 0;
    for (const auto& section : contents.bills) {
        bills += section.items.size();
        for (const SQdInfo& item : section.items)
            EXPECT_TRUE(item.strNumber.startsWith(section.indexPath.section(u'\\', 1)));
    }
    EXPECT_EQ(bills, ShippedRows(u"bill_items"_s, u"GB50856-2013"_s).size());
    std::size_t quotas = 0;
    for (const auto& section : contents.quotas) {
        quotas += section.items.size();
        for (const embedded::QuotaItem& item : section.items) {
            EXPECT_TRUE(item.record.strNumber.startsWith(section.code + u'-'));
            EXPECT_FALSE(item.bills.isEmpty());
        }
    }
    EXPECT_EQ(quotas, ShippedRows(u"quota_items"_s, u"DEMO-QDDE-2024"_s).size());
}

TEST_F(Lookup, QuotaItemsHaveAllTheirFields)
{
    const auto& sections = m_host.Contents().quotas;
    const auto section =
        std::find_if(sections.begin(), sections.end(),
                     [](const embedded::QuotaSection& candidate) { return candidate.code == u"示10-1"_s; });
    ASSERT_NE(section, sections.end());
    ASSERT_FALSE(section->items.empty());
    const embedded::QuotaItem& item = section->items.front();
    EXPECT_EQ(item.record.strNumber, u"示10-1-1"_s);
    EXPECT_EQ(item.record.strName, u"室内镀锌钢管 螺纹连接 公称直径(mm以内)15"_s);
    EXPECT_EQ(item.record.strUnit, u"10m"_s);
    EXPECT_EQ(item.record.nUnitCode, 10);
    EXPECT_EQ(item.record.nWithAnnex, 1);
    EXPECT_EQ(item.record.strCalRule, u"管道长度"_s);
    EXPECT_EQ(item.bills, CStringArray{u"031001001"_s});
}
