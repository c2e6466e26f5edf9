#include "embedded/ShippedTable.h"
#include "xml/Dom.h"

#include <QtCore/QSet>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using test::FullName;
using test::ShippedTable;
using test::TableRow;

namespace {

QSet<CString> SmallCategoryNames()
{
    QSet<CString> names;
    for (const TableRow& row : ShippedTable(u"small_categories"_s))
        names.insert(FullName(row));
    return names;
}

/// Whether every value of a column is a positive decimal number that occurs only once.
void ExpectUniqueIds(const CString& table)
{
    QSet<CString> seen;
    for (const TableRow& row : ShippedTable(table)) {
        const CString id = row[u"id"_s];
        EXPECT_GT(id.toInt(), 0) << table.toStdString() << ' ' << id.toStdString();
        EXPECT_EQ(CString::number(id.toInt()), id);
        EXPECT_FALSE(seen.contains(id)) << table.toStdString() << ' ' << id.toStdString();
        seen.insert(id);
    }
}

} // namespace

TEST(CategoryData, SixSpecialtiesInTheirOrder)
{
    CStringArray names;
    for (const TableRow& row : ShippedTable(u"specialties"_s))
        names.append(row[u"name"_s]);
    EXPECT_EQ(names, (CStringArray{u"给排水"_s, u"电气"_s, u"暖通"_s, u"消防"_s, u"弱电"_s, u"建筑"_s}));
}

TEST(CategoryData, IdsAreDecimalNumbersUniqueWithinTheirLevel)
{
    ExpectUniqueIds(u"specialties"_s);
    ExpectUniqueIds(u"big_categories"_s);
    ExpectUniqueIds(u"small_categories"_s);
}

TEST(CategoryData, IdsBeginWithTheIdOfTheLevelAbove)
{
    QHash<CString, CString> above;
    for (const TableRow& row : ShippedTable(u"specialties"_s))
        above.insert(row[u"name"_s], row[u"id"_s]);
    for (const TableRow& row : ShippedTable(u"big_categories"_s)) {
        EXPECT_EQ(row[u"id"_s].chopped(2), above[row[u"specialty"_s]]) << row[u"id"_s].toStdString();
        above.insert(row[u"specialty"_s] + u'\\' + row[u"name"_s], row[u"id"_s]);
    }
    for (const TableRow& row : ShippedTable(u"small_categories"_s)) {
        const CString big = row[u"specialty"_s] + u'\\' + row[u"big_category"_s];
        EXPECT_EQ(row[u"id"_s].chopped(2), above[big]) << row[u"id"_s].toStdString();
    }
}

TEST(CategoryData, IdsThatAreWrittenIntoRuleFilesStayWithTheirCategories)
{
    QHash<CString, CString> names;
    for (const TableRow& row : ShippedTable(u"small_categories"_s))
        names.insert(row[u"id"_s], FullName(row));
    EXPECT_EQ(names[u"10101"_s], u"给排水\\管道\\给水管"_s);
    EXPECT_EQ(names[u"10307"_s], u"给排水\\卫生器具\\地漏"_s);
    EXPECT_EQ(names[u"20101"_s], u"电气\\配电箱柜\\配电箱"_s);
    EXPECT_EQ(names[u"20306"_s], u"电气\\配管配线\\线槽"_s);
    EXPECT_EQ(names[u"30106"_s], u"暖通\\风管\\柔性软风管"_s);
    EXPECT_EQ(names[u"40503"_s], u"消防\\报警管线\\报警线槽"_s);
    EXPECT_EQ(names[u"50101"_s], u"弱电\\箱柜\\接线箱"_s);
    EXPECT_EQ(names[u"60202"_s], u"建筑\\孔洞基础\\设备基础"_s);
}

TEST(CategoryData, WiresCanBeChosenWhereCombinedLinesAreLeftOut)
{
    const QSet<CString> names = SmallCategoryNames();
    for (const CString& name :
         {u"电气\\配管配线\\配线"_s, u"消防\\报警管线\\报警配线"_s, u"弱电\\弱电管线\\弱电配线"_s})
        EXPECT_TRUE(names.contains(name)) << name.toStdString();
}

TEST(CategoryData, EveryNameIsAnXmlName)
{
    for (const CString& table : {u"specialties"_s, u"big_categories"_s, u"small_categories"_s}) {
        for (const TableRow& row : ShippedTable(table))
            EXPECT_TRUE(xml::IsName(row[u"name"_s])) << row[u"name"_s].toStdString();
    }
}

TEST(CategoryData, NoFullNameOccursTwiceAndEveryParentExists)
{
    QSet<CString> specialties;
    for (const TableRow& row : ShippedTable(u"specialties"_s))
        specialties.insert(row[u"name"_s]);
    QSet<CString> bigCategories;
    for (const TableRow& row : ShippedTable(u"big_categories"_s)) {
        EXPECT_TRUE(specialties.contains(row[u"specialty"_s]));
        const CString name = row[u"specialty"_s] + u'\\' + row[u"name"_s];
        EXPECT_FALSE(bigCategories.contains(name)) << name.toStdString();
        bigCategories.insert(name);
    }
    QSet<CString> smallCategories;
    for (const TableRow& row : ShippedTable(u"small_categories"_s)) {
        EXPECT_TRUE(bigCategories.contains(row[u"specialty"_s] + u'\\' + row[u"big_category"_s]));
        EXPECT_FALSE(smallCategories.contains(FullName(row))) << FullName(row).toStdString();
        smallCategories.insert(FullName(row));
    }
    EXPECT_GE(smallCategories.size(), 190);
}

TEST(CategoryData, EveryBigCategoryHasASmallOneThatIsNoCombinedLine)
{
    QHash<CString, int> shown;
    for (const TableRow& row : ShippedTable(u"big_categories"_s))
        shown.insert(row[u"specialty"_s] + u'\\' + row[u"name"_s], 0);
    for (const TableRow& row : ShippedTable(u"small_categories"_s)) {
        const CString name = row[u"name"_s];
        // The tree leaves these out, and a big category without any other could not be opened.
        if (name.contains(u"导线·导管"_s) || name.contains(u"配管配线"_s) || name.contains(u"组合管线"_s))
            continue;
        ++shown[row[u"specialty"_s] + u'\\' + row[u"big_category"_s]];
    }
    for (auto big = shown.cbegin(); big != shown.cend(); ++big)
        EXPECT_GT(*big, 0) << big.key().toStdString();
}

TEST(CategoryData, CategoriesWithDerivedAttributesExist)
{
    const QSet<CString> names = SmallCategoryNames();
    for (const CString& name :
         {u"电气\\配电箱柜\\配电箱"_s, u"电气\\配电箱柜\\配电柜"_s, u"电气\\配电箱柜\\元件装置"_s,
          u"弱电\\箱柜\\接线箱"_s, u"电气\\电缆桥架\\桥架"_s, u"电气\\电缆桥架\\托盘"_s,
          u"电气\\电缆桥架\\组合式桥架"_s, u"弱电\\线槽桥架\\线槽"_s, u"弱电\\线槽桥架\\桥架"_s})
        EXPECT_TRUE(names.contains(name)) << name.toStdString();
    int ducts = 0;
    for (const CString& name : names)
        ducts += name.startsWith(u"暖通\\风管\\"_s) ? 1 : 0;
    EXPECT_GE(ducts, 2);
}

TEST(CategoryData, CombinedLinesExist)
{
    for (const CString& part : {u"导线·导管"_s, u"配管配线"_s, u"组合管线"_s}) {
        bool found = false;
        for (const TableRow& row : ShippedTable(u"small_categories"_s))
            found |= row[u"name"_s].contains(part);
        EXPECT_TRUE(found) << part.toStdString();
    }
}

TEST(CategoryData, BothGridFormsOccur)
{
    QSet<CString> types;
    for (const TableRow& row : ShippedTable(u"small_categories"_s))
        types.insert(row[u"att_type"_s]);
    EXPECT_EQ(types, (QSet<CString>{u"0"_s, u"1"_s}));
}

TEST(CategoryData, EveryIndexPathIsASectionOfTheBillLibrary)
{
    QSet<CString> sections;
    for (const TableRow& row : ShippedTable(u"bill_sections"_s))
        sections.insert(row[u"index_path"_s]);
    int placed = 0;
    for (const TableRow& row : ShippedTable(u"small_categories"_s)) {
        if (row[u"index_path"_s].isEmpty()) continue;
        ++placed;
        for (const CString& place : row[u"index_path"_s].split(u'|'))
            EXPECT_TRUE(sections.contains(place)) << FullName(row).toStdString();
    }
    EXPECT_GE(placed, 185);
}

TEST(CategoryData, EveryCategoryIsMeasuredByAKnownCalculationItem)
{
    QHash<CString, CString> rules;
    for (const TableRow& row : ShippedTable(u"calculation_rules"_s)) {
        EXPECT_FALSE(row[u"rule"_s].isEmpty()) << row[u"item"_s].toStdString();
        rules.insert(row[u"item"_s], row[u"rule"_s]);
    }
    QSet<CString> unmeasured = SmallCategoryNames();
    const QSet<CString> known = unmeasured;
    for (const TableRow& row : ShippedTable(u"calculation_items"_s)) {
        EXPECT_TRUE(known.contains(row[u"category"_s])) << row[u"category"_s].toStdString();
        EXPECT_TRUE(rules.contains(row[u"item"_s])) << row[u"item"_s].toStdString();
        EXPECT_TRUE(row[u"list_name"_s] == u"main"_s || row[u"list_name"_s] == u"other"_s);
        if (row[u"list_name"_s] == u"main"_s) unmeasured.remove(row[u"category"_s]);
    }
    EXPECT_TRUE(unmeasured.isEmpty()) << unmeasured.values().join(u' ').toStdString();
}
