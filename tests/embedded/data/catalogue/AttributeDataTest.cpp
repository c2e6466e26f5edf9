#include "embedded/ShippedTable.h"

#include "support/SourceTree.h"
#include "xml/Dom.h"

#include <QtCore/QFile>
#include <QtCore/QSet>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using test::FullName;
using test::ShippedTable;
using test::TableRow;

namespace {

const CStringArray DerivedCodes{u"AM_Perimeter"_s, u"AM_LongEdge"_s, u"AM_Diameter"_s, u"AM_SemiPerimeter"_s,
                                u"AM_SPerimeter"_s};

/// Attribute code and "type" of AttributeInformation.xml.
QHash<CString, CString> InformationTypes()
{
    QFile file(test::InSourceTree(u"data/AttributeInformation.xml"_s));
    const xml::Document document = xml::Document::Create();
    QHash<CString, CString> types;
    if (!file.open(QIODevice::ReadOnly) || !document.LoadBytes(file.readAll())) return types;
    const xml::Node root = document.SelectSingleNode(u"属性参数信息"_s);
    if (root.IsNull()) return types;
    for (xml::Node node = root.FirstChild(); node; node = node.NextSibling()) {
        CString type;
        node.ToElement().GetAttribute(u"type"_s, type);
        EXPECT_FALSE(types.contains(node.Name())) << node.Name().toStdString();
        types.insert(node.Name(), type);
    }
    return types;
}

QSet<CString> UsedCodes()
{
    QSet<CString> codes;
    for (const TableRow& row : ShippedTable(u"attributes"_s))
        codes.insert(row[u"code"_s]);
    return codes;
}

} // namespace

TEST(AttributeData, CodesAreAsciiXmlNames)
{
    for (const CString& code : UsedCodes()) {
        EXPECT_TRUE(xml::IsName(code)) << code.toStdString();
        for (const QChar character : code)
            EXPECT_LT(character.unicode(), 128) << code.toStdString();
    }
}

TEST(AttributeData, EverySmallCategoryHasAttributesAndNoOtherHas)
{
    QSet<CString> without;
    for (const TableRow& row : ShippedTable(u"small_categories"_s))
        without.insert(FullName(row));
    const QSet<CString> known = without;
    for (const TableRow& row : ShippedTable(u"attributes"_s)) {
        EXPECT_TRUE(known.contains(row[u"category"_s])) << row[u"category"_s].toStdString();
        without.remove(row[u"category"_s]);
    }
    EXPECT_TRUE(without.isEmpty()) << without.values().join(u' ').toStdString();
}

TEST(AttributeData, DisplayNameAndCodeOccurOnceInACategory)
{
    QSet<CString> seen;
    for (const TableRow& row : ShippedTable(u"attributes"_s)) {
        for (const CString& column : {u"display_name"_s, u"code"_s}) {
            const CString key = row[u"category"_s] + u'\t' + row[column];
            EXPECT_FALSE(row[column].isEmpty());
            EXPECT_FALSE(seen.contains(key)) << key.toStdString();
            seen.insert(key);
        }
    }
}

TEST(AttributeData, NoDisplayNameOfACategoryIsPartOfAnother)
{
    // A new condition takes the place of the first condition whose text holds the attribute's name.
    QHash<CString, CStringArray> names;
    for (const TableRow& row : ShippedTable(u"attributes"_s))
        names[row[u"category"_s]].append(row[u"display_name"_s]);
    for (auto category = names.cbegin(); category != names.cend(); ++category) {
        for (const CString& name : *category) {
            EXPECT_EQ(category->filter(name).size(), 1)
                << category.key().toStdString() << ' ' << name.toStdString();
        }
    }
}

TEST(AttributeData, EveryCodeHasAValueSource)
{
    QHash<CString, TableRow> sources;
    for (const TableRow& row : ShippedTable(u"cell_data"_s)) {
        EXPECT_FALSE(sources.contains(row[u"code"_s])) << row[u"code"_s].toStdString();
        sources.insert(row[u"code"_s], row);
    }
    for (const CString& code : UsedCodes())
        EXPECT_TRUE(sources.contains(code)) << code.toStdString();
    for (const CString& code : DerivedCodes)
        EXPECT_TRUE(sources.contains(code)) << code.toStdString();
}

TEST(AttributeData, KindsAgreeWithTheValues)
{
    for (const TableRow& row : ShippedTable(u"cell_data"_s)) {
        const CString kind = row[u"kind"_s];
        EXPECT_TRUE(kind == u"0"_s || kind == u"1"_s || kind == u"9"_s) << kind.toStdString();
        EXPECT_EQ(!row[u"value_list"_s].isEmpty(), kind == u"1"_s) << row[u"code"_s].toStdString();
    }
}

TEST(AttributeData, DropListsBelongToTheCodesOfKindNineAndAreNamedByTheAttributes)
{
    QSet<CString> listed;
    QSet<CString> lists;
    for (const TableRow& row : ShippedTable(u"drop_lists"_s)) {
        EXPECT_FALSE(row[u"value_list"_s].isEmpty());
        listed.insert(row[u"code"_s]);
        lists.insert(row[u"code"_s] + u'\t' + row[u"name"_s]);
    }
    QSet<CString> expected;
    for (const TableRow& row : ShippedTable(u"cell_data"_s)) {
        if (row[u"kind"_s] == u"9"_s) expected.insert(row[u"code"_s]);
    }
    EXPECT_EQ(listed, expected);
    QSet<CString> used;
    for (const TableRow& row : ShippedTable(u"attributes"_s)) {
        EXPECT_EQ(!row[u"extra"_s].isEmpty(), listed.contains(row[u"code"_s]))
            << row[u"code"_s].toStdString();
        if (!row[u"extra"_s].isEmpty()) used.insert(row[u"code"_s] + u'\t' + row[u"extra"_s]);
    }
    EXPECT_EQ(used, lists);
}

TEST(AttributeData, NoValueOccursTwiceInAList)
{
    for (const CString& table : {u"cell_data"_s, u"drop_lists"_s}) {
        for (const TableRow& row : ShippedTable(table)) {
            CStringArray values = row[u"value_list"_s].split(u'|');
            EXPECT_EQ(values.removeDuplicates(), 0) << row[u"code"_s].toStdString();
        }
    }
}

TEST(AttributeData, NumbersOfAListCountUp)
{
    for (const CString& table : {u"cell_data"_s, u"drop_lists"_s}) {
        for (const TableRow& row : ShippedTable(table)) {
            double last = -1;
            for (const CString& value : row[u"value_list"_s].split(u'|', Qt::SkipEmptyParts)) {
                bool isNumber = false;
                const double number = value.toDouble(&isNumber);
                if (!isNumber) break; // a list of names
                EXPECT_GT(number, last) << row[u"code"_s].toStdString() << ' ' << value.toStdString();
                last = number;
            }
        }
    }
}

TEST(AttributeData, InformationFileClassifiesExactlyTheCodesInUse)
{
    const QHash<CString, CString> types = InformationTypes();
    QSet<CString> expected = UsedCodes();
    for (const CString& code : DerivedCodes)
        expected.insert(code);
    const CStringArray codes = types.keys();
    EXPECT_EQ(QSet<CString>(codes.begin(), codes.end()), expected);
    const QSet<CString> known{u"1"_s, u"2"_s, u"3"_s, u"8"_s, u"9"_s, u"10"_s, u"11"_s};
    for (const CString& type : types)
        EXPECT_TRUE(known.contains(type)) << type.toStdString();
}

TEST(AttributeData, LengthsCanBeComparedAndTextsCannot)
{
    const QHash<CString, CString> types = InformationTypes();
    const QSet<CString> comparable{u"3"_s, u"8"_s, u"9"_s};
    for (const CString& code : DerivedCodes)
        EXPECT_TRUE(comparable.contains(types[code])) << code.toStdString();
    for (const CString& code : {u"AM_NominalDiameter"_s, u"AM_Width"_s, u"AM_InsulationThickness"_s})
        EXPECT_TRUE(comparable.contains(types[code])) << code.toStdString();
    for (const CString& code : {u"AM_Material"_s, u"AM_Connection"_s, u"AM_Laying"_s, u"AM_Location"_s})
        EXPECT_FALSE(comparable.contains(types[code])) << code.toStdString();
}
