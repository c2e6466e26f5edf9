#include "TableFixture.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using tables::CellKind;
using test::FieldsOf;
using test::MakeXlsx;
using test::RecordsOf;
using test::RefusalOf;

namespace {

const CString XlsxName = u"表.xlsx"_s;

} // namespace

TEST(XlsxReader, CellsHaveTheirTextAndKind)
{
    const QByteArray book =
        MakeXlsx("<row r=\"1\"><c r=\"A1\" t=\"s\"><v>0</v></c><c r=\"B1\" t=\"s\"><v>1</v></c>"
                 "<c r=\"C1\" t=\"s\"><v>2</v></c></row>"
                 "<row r=\"3\"><c r=\"A3\" t=\"inlineStr\"><is><r><t>内</t></r><r><t>联</t></r></is></c>"
                 "<c r=\"B3\"><v>50.0</v></c><c r=\"D3\" t=\"b\"><v>1</v></c>"
                 "<c r=\"E3\" t=\"e\"><v>#REF!</v></c><c r=\"F3\" s=\"1\"><v>45293</v></c>"
                 "<c r=\"G3\" s=\"2\"><v>45293.25</v></c><c r=\"H3\" t=\"d\"><v>2024-01-02T00:00:00</v></c>"
                 "<c r=\"I3\" t=\"str\"><f>A1</f><v>结果</v></c><c r=\"J3\"><f>1+1</f><v>2</v></c>"
                 "<c r=\"K3\"><f>1+1</f></c><c r=\"L3\" s=\"3\"><v>0.1</v></c><c r=\"M3\"/></row>");
    const auto records = RecordsOf(book, XlsxName);
    ASSERT_EQ(records.size(), 2);
    EXPECT_EQ(records[0].fields, (CStringArray{u"编号"_s, u"名称"_s, u"镀锌 钢管"_s}));
    EXPECT_EQ(records[1].line, 3);
    EXPECT_EQ(records[1].fields, (CStringArray{u"内联"_s,
                                               u"50"_s,
                                               {},
                                               u"TRUE"_s,
                                               u"#REF!"_s,
                                               u"2024-01-02"_s,
                                               u"2024-01-02 06:00:00"_s,
                                               u"2024-01-02"_s,
                                               u"结果"_s,
                                               u"2"_s,
                                               {},
                                               u"0.1"_s}));
    using enum CellKind;
    EXPECT_EQ(test::KindsOf(book, XlsxName, 1),
              (std::vector<CellKind>{Text, Number, Empty, Boolean, Error, Date, Date, Date, Text, Number,
                                     Error, Number}));
}

TEST(XlsxReader, CellsThatHoldNoValueAreFaultsOfTheirRecord)
{
    const auto faultOf = [](const QByteArray& cell) {
        return RecordsOf(MakeXlsx("<row><c t=\"s\"><v>0</v></c></row><row><c><v>1</v></c>" + cell + "</row>"),
                         XlsxName)[1]
            .fault;
    };
    EXPECT_EQ(faultOf("<c t=\"e\"><v>#REF!</v></c>"), u"B 列是出错的值（#REF!）"_s);
    EXPECT_TRUE(faultOf("<c><f>A1</f></c>").startsWith(u"B 列是没有保存结果的公式"_s));
    EXPECT_TRUE(faultOf("<c><f>A1</f><v/></c>").startsWith(u"B 列是没有保存结果的公式"_s));
    EXPECT_TRUE(faultOf("<c s=\"1\"><v>45293</v></c>").startsWith(u"B 列是日期（2024-01-02）"_s));
    EXPECT_EQ(faultOf("<c t=\"str\"><f>A1</f><v></v></c>"), CString());
    EXPECT_EQ(faultOf("<c><f>A1</f><v>0</v></c>"), CString());
}

TEST(XlsxReader, NumberAndTextOfTheSameDigitsAreOneValue)
{
    const auto rows =
        FieldsOf(MakeXlsx("<row><c t=\"inlineStr\"><is><t>30801001001</t></is></c><c><v>30801001001</v></c>"
                          "<c><v>3.0801001001E+10</v></c></row>"),
                 XlsxName);
    EXPECT_EQ(rows.first(), CStringArray(3, u"30801001001"_s));
}

TEST(XlsxReader, EscapedCharactersAndEmptyTextsAreTakenAsMeant)
{
    EXPECT_EQ(FieldsOf(MakeXlsx("<row><c t=\"s\"><v>3</v></c><c t=\"s\"><v>4</v></c>"
                                "<c t=\"inlineStr\"><is><t>x_x000A_y</t></is></c></row>"),
                       XlsxName),
              (CArray<CStringArray>{{u"a\rb_x0041_"_s, {}, u"x\ny"_s}}));
}

TEST(XlsxReader, EmptyRowsArePassedOverAndRowsAreFilledUpToTheHeadings)
{
    const auto records =
        RecordsOf(MakeXlsx("<row/><row r=\"5\"><c><v>1</v></c><c><v>2</v></c><c><v>3</v></c></row>"
                           "<row r=\"6\"><c r=\"C6\" t=\"s\"><v>4</v></c></row>"
                           "<row r=\"9\"><c r=\"B9\"><v>4</v></c></row>"
                           "<row r=\"10\"><c r=\"E10\"><v>4</v></c></row>"),
                  XlsxName);
    ASSERT_EQ(records.size(), 3);
    EXPECT_EQ(records[1].line, 9);
    EXPECT_EQ(records[1].fields, (CStringArray{{}, u"4"_s, {}}));
    EXPECT_EQ(records[2].fields.size(), 5);
}

TEST(XlsxReader, FirstVisibleSheetIsReadUnlessOneIsNamed)
{
    const QByteArray book = MakeXlsx("<row><c><v>1</v></c></row>");
    EXPECT_EQ(FieldsOf(book, XlsxName), CArray<CStringArray>{{u"1"_s}});
    EXPECT_EQ(FieldsOf(book, XlsxName, u"说明"_s), CArray<CStringArray>{{u"别的"_s}});
    EXPECT_EQ(FieldsOf(book, XlsxName, u"藏"_s), CArray<CStringArray>{{u"别的"_s}});
    EXPECT_EQ(RefusalOf(book, XlsxName, u"没有"_s), u"没有名为“没有”的工作表，只有：藏、构件、说明"_s);
    const test::TempFolder folder;
    const auto reader = tables::OpenTable(folder.WriteFile(XlsxName, book));
    EXPECT_EQ(reader->Sheets(), (CStringArray{u"藏"_s, u"构件"_s, u"说明"_s}));
    EXPECT_EQ(reader->Sheet(), u"构件"_s);
}

TEST(XlsxReader, WhatTheFileHoldsDecidesNotItsName)
{
    const QByteArray book = MakeXlsx("<row><c><v>1</v></c></row>");
    EXPECT_EQ(FieldsOf(book, u"a.csv"_s), CArray<CStringArray>{{u"1"_s}});
    EXPECT_EQ(RefusalOf("a,b\n", XlsxName), u"不是工作簿，内容与扩展名不符"_s);
    EXPECT_EQ(RefusalOf("a,b\n", u"a.ODS"_s), u"不是工作簿，内容与扩展名不符"_s);
    EXPECT_EQ(RefusalOf(test::MakeZip({{"a.txt", "x"}}), XlsxName), u"不是工作簿，是别的压缩文件"_s);
}

TEST(XlsxReader, MergedCellsOfTheTableAreRefusedOthersAreNot)
{
    const QByteArray rows = "<row r=\"2\"><c r=\"A2\"><v>1</v></c><c r=\"B2\"><v>2</v></c></row>"
                            "<row r=\"3\"><c r=\"A3\"><v>1</v></c></row>";
    const auto refusal = [&](const QByteArray& range) {
        return RefusalOf(MakeXlsx(rows, "<mergeCells><mergeCell ref=\"" + range + "\"/></mergeCells>"),
                         XlsxName);
    };
    EXPECT_EQ(refusal("A2:A3"),
              u"工作表“构件”第 2 行 A 列：有合并的单元格（A2:A3），请取消合并，把每个单元格都填上"_s);
    EXPECT_TRUE(refusal("B3:D3").contains(u"B3:D3"_s));
    for (const QByteArray range : {"A1:B1", "C2:C3", "A4:B5", "B2:B2", "B2", "nonsense:B2"})
        EXPECT_EQ(refusal(range), u"no error"_s) << range.toStdString();
}

TEST(XlsxReader, PlacesThatCannotBeAreRefused)
{
    const auto refusal = [](const QByteArray& rows) { return RefusalOf(MakeXlsx(rows), XlsxName); };
    EXPECT_TRUE(refusal("<row r=\"1048577\"><c><v>1</v></c></row>").contains(u"不能超过 1048576 行"_s));
    EXPECT_TRUE(refusal("<row r=\"2000000\"/>").contains(u"不能超过 1048576 行"_s));
    EXPECT_TRUE(refusal("<row r=\"2\"/><row r=\"2\"/>").contains(u"不按顺序"_s));
    EXPECT_TRUE(refusal("<row r=\"x\"/>").contains(u"不按顺序"_s));
    EXPECT_TRUE(refusal("<row r=\"-1\"/>").contains(u"不按顺序"_s));
    EXPECT_TRUE(refusal("<row><c r=\"XFE1\"/></row>").contains(u"位置“XFE1”无效"_s));
    EXPECT_TRUE(refusal("<row><c r=\"1\"/></row>").contains(u"位置“1”无效"_s));
    EXPECT_TRUE(refusal("<row><c r=\"XFD1\"/><c/></row>").contains(u"不能超过 16384 列"_s));
    EXPECT_EQ(refusal("<row><c t=\"s\"><v>5</v></c></row>"),
              u"工作表“构件”第 1 行 A 列：单元格的文字不存在，工作簿损坏"_s);
    EXPECT_TRUE(refusal("<row><c t=\"s\"><v>-1</v></c></row>").contains(u"不存在"_s));
    EXPECT_EQ(refusal("<row><c/><c><v>1,5</v></c></row>"), u"工作表“构件”第 1 行 B 列：“1,5”不是数"_s);
}

TEST(XlsxReader, WorkbookMayLackTextsAndFormats)
{
    test::Parts parts = test::XlsxParts("<row><c s=\"7\"><v>1</v></c></row>");
    parts.erase("xl/sharedStrings.xml");
    parts.erase("xl/styles.xml");
    EXPECT_EQ(FieldsOf(test::MakeZip(parts), XlsxName), CArray<CStringArray>{{u"1"_s}});
}

TEST(XlsxReader, DatesCountFrom1904WhereTheWorkbookSaysSo)
{
    test::Parts parts = test::XlsxParts("<row><c s=\"1\"><v>43831</v></c></row>");
    parts["xl/workbook.xml"].replace("<sheets>", "<workbookPr date1904=\"1\"/><sheets>");
    EXPECT_EQ(RecordsOf(test::MakeZip(parts), XlsxName).first().fields, CStringArray{u"2024-01-02"_s});
}
