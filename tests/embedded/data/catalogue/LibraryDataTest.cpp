#include "embedded/ShippedTable.h"

#include "support/SourceTree.h"

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QSet>

#include <gtest/gtest.h>

#include <algorithm>

using namespace Qt::StringLiterals;
using test::ShippedRows;
using test::ShippedTable;
using test::TableRow;

namespace {

const QSet<CString> BillUnits{u"m"_s,    u"m2"_s, u"m3"_s, u"kg"_s, u"t"_s,  u"个"_s, u"台"_s,
                              u"套"_s,   u"组"_s, u"根"_s, u"条"_s, u"块"_s, u"片"_s, u"副"_s,
                              u"具"_s,   u"支"_s, u"箱"_s, u"处"_s, u"点"_s, u"芯"_s, u"链路"_s,
                              u"系统"_s, u"段"_s, u"次"_s, u"只"_s, u"项"_s};

/// The item sets of the two bill libraries, of which the second is an excerpt.
const CString Standard2013 = u"GB50856-2013"_s;
const CString Standard2008 = u"GB50500-2008"_s;

/// The item sets of a table.
QSet<CString> SetsOf(const CString& table)
{
    QSet<CString> sets;
    for (const TableRow& row : ShippedTable(table))
        sets.insert(row[u"items"_s]);
    return sets;
}

/// The number at the head of a unit such as "10m", at least 1.
int LeadingNumber(const CString& unit)
{
    static const QRegularExpression digits(u"^\\d+"_s);
    return std::max(1, digits.match(unit).captured().toInt());
}

void ExpectUnitCodeAndFlag(const TableRow& row)
{
    EXPECT_EQ(row[u"unit_code"_s].toInt(), LeadingNumber(row[u"unit"_s])) << row[u"number"_s].toStdString();
    EXPECT_TRUE(row[u"with_annex"_s] == u"0"_s || row[u"with_annex"_s] == u"1"_s)
        << row[u"number"_s].toStdString();
    EXPECT_FALSE(row[u"name"_s].isEmpty()) << row[u"number"_s].toStdString();
}

} // namespace

TEST(LibraryData, BillNumbersHaveNineDigitsAndAreUnique)
{
    static const QRegularExpression nineDigits(u"^[0-9]{9}$"_s);
    QSet<CString> seen;
    for (const TableRow& row : ShippedTable(u"bill_items"_s)) {
        const CString number = row[u"number"_s];
        EXPECT_TRUE(nineDigits.match(number).hasMatch()) << number.toStdString();
        const CString key = row[u"items"_s] + u' ' + number;
        EXPECT_FALSE(seen.contains(key)) << key.toStdString();
        seen.insert(key);
    }
    EXPECT_GE(ShippedRows(u"bill_items"_s, Standard2013).size(), 500u);
    EXPECT_GE(ShippedRows(u"bill_items"_s, Standard2008).size(), 100u);
}

TEST(LibraryData, BillItemsAndSectionsStandInTheOrderOfTheirNumbers)
{
    for (const CString& items : {Standard2013, Standard2008}) {
        CString last;
        for (const TableRow& row : ShippedRows(u"bill_items"_s, items)) {
            EXPECT_LT(last, row[u"number"_s]);
            last = row[u"number"_s];
        }
        last.clear();
        for (const TableRow& row : ShippedRows(u"bill_sections"_s, items)) {
            EXPECT_LT(last, row[u"index_path"_s]);
            last = row[u"index_path"_s];
        }
    }
}

TEST(LibraryData, EverySectionHoldsBillItemsAndNoNameTwice)
{
    QSet<CString> filled;
    QSet<CString> seen;
    for (const TableRow& row : ShippedTable(u"bill_items"_s)) {
        const CString key = row[u"items"_s] + u'\t' + row[u"index_path"_s] + u'\t' + row[u"name"_s];
        EXPECT_FALSE(seen.contains(key)) << key.toStdString();
        seen.insert(key);
        filled.insert(row[u"items"_s] + u'\t' + row[u"index_path"_s]);
    }
    for (const TableRow& row : ShippedTable(u"bill_sections"_s)) {
        const CString path = row[u"items"_s] + u'\t' + row[u"index_path"_s];
        EXPECT_EQ(filled.contains(path), path.contains(u'\\')) << path.toStdString();
    }
}

TEST(LibraryData, ChaptersOfTheFiveServicesAreThere)
{
    QHash<CString, int> items;
    for (const TableRow& row : ShippedRows(u"bill_items"_s, Standard2013))
        ++items[row[u"number"_s].left(4)];
    for (const CString& chapter :
         {u"0301"_s, u"0304"_s, u"0305"_s, u"0307"_s, u"0309"_s, u"0310"_s, u"0312"_s, u"0313"_s})
        EXPECT_GE(items[chapter], 20) << chapter.toStdString();
}

TEST(LibraryData, BillNumbersCountUpFromOneInTheirSection)
{
    QHash<CString, int> last;
    for (const TableRow& row : ShippedRows(u"bill_items"_s, Standard2013)) {
        const CString number = row[u"number"_s];
        EXPECT_EQ(number.mid(6).toInt(), ++last[number.left(6)]) << number.toStdString();
    }
}

TEST(LibraryData, BillItemsStandInTheSectionOfTheirNumber)
{
    QSet<CString> sections;
    for (const TableRow& row : ShippedTable(u"bill_sections"_s)) {
        EXPECT_FALSE(row[u"title"_s].isEmpty());
        sections.insert(row[u"items"_s] + row[u"index_path"_s]);
    }
    for (const TableRow& row : ShippedTable(u"bill_items"_s)) {
        const CString number = row[u"number"_s];
        const bool isOf2013 = row[u"items"_s] == Standard2013;
        // The same section numbers mean other sections in the older standard, so its chapters have a letter.
        const CString chapter = isOf2013 ? number.left(4) : u"C%1"_s.arg(number.mid(2, 2).toInt());
        EXPECT_EQ(row[u"index_path"_s], chapter + u'\\' + number.left(6));
        EXPECT_TRUE(sections.contains(row[u"items"_s] + row[u"index_path"_s])) << number.toStdString();
    }
}

TEST(LibraryData, EveryChapterOfTheIndexComesBeforeItsSections)
{
    QSet<CString> seen;
    for (const TableRow& row : ShippedTable(u"bill_sections"_s)) {
        const CString path = row[u"index_path"_s];
        const CString chapter = path.section(u'\\', 0, 0);
        EXPECT_TRUE(path == chapter || seen.contains(row[u"items"_s] + chapter)) << path.toStdString();
        seen.insert(row[u"items"_s] + path);
    }
}

TEST(LibraryData, PlacesOfCategoriesAreSectionsAndNoSectionOfTwoLibrariesHasTheSamePlace)
{
    QHash<CString, CString> itemsOfSection;
    for (const TableRow& row : ShippedTable(u"bill_sections"_s)) {
        EXPECT_FALSE(itemsOfSection.contains(row[u"index_path"_s])) << row[u"index_path"_s].toStdString();
        itemsOfSection.insert(row[u"index_path"_s], row[u"items"_s]);
    }
    int ofBoth = 0;
    for (const TableRow& row : ShippedTable(u"small_categories"_s)) {
        CStringArray items;
        for (const CString& place : row[u"index_path"_s].split(u'|', Qt::SkipEmptyParts))
            items.append(itemsOfSection.value(place));
        const bool isOfBoth = items == CStringArray{Standard2013, Standard2008};
        EXPECT_TRUE(items.isEmpty() || items == CStringArray{Standard2013} || isOfBoth)
            << test::FullName(row).toStdString();
        ofBoth += isOfBoth ? 1 : 0;
    }
    EXPECT_GE(ofBoth, 100);
}

TEST(LibraryData, BillUnitsAreThoseOfTheStandard)
{
    for (const TableRow& row : ShippedTable(u"bill_items"_s)) {
        EXPECT_TRUE(BillUnits.contains(row[u"unit"_s])) << row[u"number"_s].toStdString();
        ExpectUnitCodeAndFlag(row);
    }
}

TEST(LibraryData, WellKnownBillItemsStandUnderTheirNumbers)
{
    QHash<CString, CString> items;
    for (const TableRow& row : ShippedRows(u"bill_items"_s, Standard2013))
        items.insert(row[u"number"_s], row[u"name"_s] + u' ' + row[u"unit"_s]);
    EXPECT_EQ(items[u"031001001"_s], u"镀锌钢管 m"_s);
    EXPECT_EQ(items[u"030411001"_s], u"配管 m"_s);
    EXPECT_EQ(items[u"030702001"_s], u"碳钢通风管道 m2"_s);
    EXPECT_EQ(items[u"030901001"_s], u"水喷淋钢管 m"_s);
    EXPECT_EQ(items[u"030404017"_s], u"配电箱 台"_s);
    EXPECT_EQ(items[u"030108003"_s], u"轴流通风机 台"_s);
    EXPECT_EQ(items[u"030109001"_s], u"离心式泵 台"_s);
    EXPECT_EQ(items[u"030113017"_s], u"冷却塔 台"_s);
    EXPECT_EQ(items[u"030402017"_s], u"高压成套配电柜 台"_s);
    EXPECT_EQ(items[u"030414002"_s], u"送配电装置系统 系统"_s);
    EXPECT_EQ(items[u"030501012"_s], u"交换机 台"_s);
    EXPECT_EQ(items[u"030505005"_s], u"射频同轴电缆 m"_s);
    EXPECT_EQ(items[u"031007005"_s], u"燃气表 块"_s);
    EXPECT_EQ(items[u"031301017"_s], u"脚手架搭拆 项"_s);
}

TEST(LibraryData, TheSameNumberIsAnotherItemInTheOlderStandard)
{
    QHash<CString, CString> items;
    for (const TableRow& row : ShippedRows(u"bill_items"_s, Standard2008))
        items.insert(row[u"number"_s], row[u"name"_s] + u' ' + row[u"unit"_s]);
    EXPECT_EQ(items[u"030801001"_s], u"镀锌钢管 m"_s);
    EXPECT_EQ(items[u"030803001"_s], u"螺纹阀门 个"_s);
    EXPECT_EQ(items[u"030804012"_s], u"大便器 套"_s);
    EXPECT_EQ(items[u"030204018"_s], u"配电箱 台"_s);
    EXPECT_EQ(items[u"030212001"_s], u"电气配管 m"_s);
    EXPECT_EQ(items[u"030701001"_s], u"水喷淋镀锌钢管 m"_s);
    EXPECT_EQ(items[u"030901005"_s], u"风机盘管 台"_s);
    EXPECT_EQ(items[u"030902001"_s], u"碳钢通风管道制作安装 m2"_s);
}

TEST(LibraryData, FittingsBelongToSomeQuantitiesAndSomeRulesAreLeftToTheCategory)
{
    int withAnnex = 0;
    int withoutRule = 0;
    const auto rows = ShippedTable(u"bill_items"_s);
    for (const TableRow& row : rows) {
        withAnnex += row[u"with_annex"_s].toInt();
        withoutRule += row[u"cal_rule"_s].isEmpty() ? 1 : 0;
    }
    EXPECT_GT(withAnnex, 0);
    EXPECT_LT(withAnnex, static_cast<int>(rows.size()));
    EXPECT_GT(withoutRule, 0);
    EXPECT_LT(withoutRule, static_cast<int>(rows.size()));
}

TEST(LibraryData, QuotaNumbersAreMarkedAsDemonstrationAndCountUpInTheirSection)
{
    QSet<CString> sections;
    for (const TableRow& row : ShippedTable(u"quota_sections"_s))
        sections.insert(row[u"code"_s]);
    QHash<CString, int> last;
    int count = 0;
    for (const TableRow& row : ShippedTable(u"quota_items"_s)) {
        const CString section = row[u"section"_s];
        EXPECT_TRUE(sections.contains(section)) << section.toStdString();
        EXPECT_TRUE(section.startsWith(u'示')) << section.toStdString();
        EXPECT_EQ(row[u"number"_s], section + u'-' + CString::number(++last[section]));
        ExpectUnitCodeAndFlag(row);
        ++count;
    }
    EXPECT_GE(count, 900);
}

TEST(LibraryData, NoQuotaNameOccursTwice)
{
    QSet<CString> seen;
    for (const TableRow& row : ShippedTable(u"quota_items"_s)) {
        const CString name = row[u"items"_s] + u' ' + row[u"name"_s];
        EXPECT_FALSE(seen.contains(name)) << name.toStdString();
        seen.insert(name);
    }
}

TEST(LibraryData, SizesOfNeighbouringQuotasOfOneKindGrow)
{
    // A kind is split at "…以内" or "…以下"; within one block of neighbours the sizes grow.
    static const QRegularExpression sized(u"^(.*\\([^)]*以[内下]\\))([0-9.]+)$"_s);
    CString kind;
    double reached = 0;
    for (const TableRow& row : ShippedTable(u"quota_items"_s)) {
        const auto match = sized.match(row[u"name"_s]);
        const double size = match.captured(2).toDouble();
        if (match.hasMatch() && match.captured(1) == kind) {
            EXPECT_GT(size, reached) << row[u"name"_s].toStdString();
        }
        kind = match.captured(1);
        reached = size;
    }
}

TEST(LibraryData, EveryPlacedCategoryHasQuotasForItsSection)
{
    QSet<CString> priced;
    for (const TableRow& row : ShippedRows(u"quota_items"_s, u"DEMO-QDDE-2024"_s)) {
        for (const CString& bill : row[u"bills"_s].split(u','))
            priced.insert(bill.left(4) + u'\\' + bill.left(6));
    }
    for (const TableRow& row : ShippedTable(u"small_categories"_s)) {
        const CString path = row[u"index_path"_s].section(u'|', 0, 0);
        EXPECT_TRUE(path.isEmpty() || priced.contains(path)) << test::FullName(row).toStdString();
    }
}

TEST(LibraryData, QuotaUnitsAreBillUnitsInRoundLots)
{
    for (const TableRow& row : ShippedTable(u"quota_items"_s)) {
        const CString unit = row[u"unit"_s];
        const int lot = LeadingNumber(unit);
        EXPECT_TRUE(lot == 1 || lot == 10 || lot == 100) << unit.toStdString();
        const CString base = lot == 1 ? unit : unit.mid(CString::number(lot).size());
        EXPECT_TRUE(BillUnits.contains(base)) << row[u"number"_s].toStdString();
    }
}

TEST(LibraryData, QuotaItemsGoWithItemsOfTheBillLibraryOfTheirGuide)
{
    QHash<CString, CString> billsOf;
    for (const TableRow& row : ShippedTable(u"libraries"_s)) {
        const CString items = row[u"items"_s].isEmpty() ? row[u"code"_s] : row[u"items"_s];
        billsOf.insert(items, row[u"bill_library"_s]);
    }
    QSet<CString> bills;
    for (const TableRow& row : ShippedTable(u"bill_items"_s))
        bills.insert(row[u"items"_s] + u' ' + row[u"number"_s]);
    QSet<CString> chapters;
    for (const TableRow& row : ShippedTable(u"quota_items"_s)) {
        for (const CString& bill : row[u"bills"_s].split(u',')) {
            const CString library = billsOf[row[u"items"_s]];
            EXPECT_TRUE(bills.contains(library + u' ' + bill)) << row[u"number"_s].toStdString();
            chapters.insert(library + u' ' + bill.left(4));
        }
    }
    for (const CString& chapter : {u"0304"_s, u"0305"_s, u"0307"_s, u"0309"_s, u"0310"_s, u"0312"_s})
        EXPECT_TRUE(chapters.contains(Standard2013 + u' ' + chapter)) << chapter.toStdString();
    for (const CString& chapter : {u"0302"_s, u"0307"_s, u"0308"_s, u"0309"_s})
        EXPECT_TRUE(chapters.contains(Standard2008 + u' ' + chapter)) << chapter.toStdString();
}

TEST(LibraryData, CalculationRulesOfItemsAreKnownCalculationItems)
{
    QSet<CString> known{CString()};
    for (const TableRow& row : ShippedTable(u"calculation_rules"_s))
        known.insert(row[u"item"_s]);
    for (const CString& table : {u"bill_items"_s, u"quota_items"_s, u"history"_s}) {
        for (const TableRow& row : ShippedTable(table))
            EXPECT_TRUE(known.contains(row[u"cal_rule"_s])) << row[u"number"_s].toStdString();
    }
}

TEST(LibraryData, HistoryNumbersAreBaseNumbersWithSuffixAndOneBaseHasSeveral)
{
    QSet<CString> bills;
    for (const TableRow& row : ShippedRows(u"bill_items"_s, Standard2013))
        bills.insert(row[u"number"_s]);
    QHash<CString, int> perBase;
    for (const TableRow& row : ShippedTable(u"history"_s)) {
        const CString base = row[u"base_number"_s];
        EXPECT_TRUE(bills.contains(base)) << base.toStdString();
        EXPECT_EQ(row[u"number"_s], base + u"%1"_s.arg(++perBase[base], 3, 10, QChar(u'0')));
        ExpectUnitCodeAndFlag(row);
    }
    EXPECT_GE(perBase[u"031001001"_s], 2);
}

TEST(LibraryData, HistoryAgreesWithTheSampleRules)
{
    QFile file(test::InSourceTree(u"samples/SampleRules.xml"_s));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const CString rules = CString::fromUtf8(file.readAll());
    for (const TableRow& row : ShippedTable(u"history"_s)) {
        const CString item = u"strQdId=\"%1\" strQdIdUser=\"\" strName=\"%2\" strUnit=\"%3\""_s.arg(
            row[u"number"_s], row[u"name"_s], row[u"unit"_s]);
        EXPECT_TRUE(rules.contains(item)) << item.toStdString();
    }
}

TEST(LibraryData, EveryRoleHasTwoLibrariesAndTheFirstAreThoseOfOldProjects)
{
    QHash<CString, CStringArray> codes;
    QSet<CString> all;
    for (const TableRow& row : ShippedTable(u"libraries"_s)) {
        codes[row[u"role"_s]].append(row[u"code"_s]);
        all.insert(row[u"code"_s]);
        const bool isBill = row[u"role"_s] == u"qd"_s;
        EXPECT_EQ(row[u"code_length"_s], isBill ? u"9"_s : u"-1"_s);
        EXPECT_EQ(row[u"suffix_length"_s], isBill ? u"3"_s : u"-1"_s);
    }
    EXPECT_EQ(all.size(), 6);
    EXPECT_EQ(codes[u"qd"_s], (CStringArray{Standard2013, Standard2008}));
    EXPECT_EQ(codes[u"qd_de"_s], (CStringArray{u"DEMO-QDDE-2024"_s, u"DEMO-QDDE-2025"_s}));
    EXPECT_EQ(codes[u"de"_s], (CStringArray{u"DEMO-DE-2024"_s, u"DEMO-DE-2025"_s}));
}

TEST(LibraryData, EveryItemSetIsOfferedByALibraryAndHasItems)
{
    QSet<CString> offered;
    for (const TableRow& row : ShippedTable(u"libraries"_s))
        offered.insert(row[u"items"_s].isEmpty() ? row[u"code"_s] : row[u"items"_s]);
    const QSet<CString> bills = SetsOf(u"bill_items"_s);
    const QSet<CString> quotas = SetsOf(u"quota_items"_s);
    EXPECT_EQ(bills + quotas, offered);
    EXPECT_EQ(SetsOf(u"bill_sections"_s), bills);
    EXPECT_EQ(SetsOf(u"quota_sections"_s), quotas);
}
