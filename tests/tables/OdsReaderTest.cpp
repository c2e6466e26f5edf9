#include "TableFixture.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using tables::CellKind;
using test::FieldsOf;
using test::MakeOds;
using test::RecordsOf;
using test::RefusalOf;

namespace {

const CString OdsName = u"表.ods"_s;

QByteArray Row(const QByteArray& cells, const QByteArray& attributes = {})
{
    return "<table:table-row " + attributes + ">" + cells + "</table:table-row>";
}

QByteArray Text(const QByteArray& paragraphs, const QByteArray& attributes = {})
{
    return "<table:table-cell office:value-type=\"string\" " + attributes + ">" + paragraphs +
           "</table:table-cell>";
}

QByteArray Value(const QByteArray& type, const QByteArray& value, const QByteArray& shown = "shown")
{
    return "<table:table-cell office:value-type=\"" + type + "\" office:" + value + "><text:p>" + shown +
           "</text:p></table:table-cell>";
}

} // namespace

TEST(OdsReader, CellsHaveTheirTextAndKind)
{
    const QByteArray book = MakeOds(
        Row(Text("<text:p>编号</text:p>") + Value("float", "value=\"50.0\"") +
            Value("percentage", "value=\"0.5\"", "50%") + Value("date", "date-value=\"2024-01-02\"") +
            Value("boolean", "boolean-value=\"true\"") +
            "<table:table-cell table:formula=\"of:=1\" office:value-type=\"float\" office:value=\"2\"/>"
            "<table:table-cell table:formula=\"of:=1\"/>"
            "<table:table-cell table:formula=\"of:=A\" office:value-type=\"string\" office:string-value=\"\" "
            "calcext:value-type=\"error\"><text:p>#REF!</text:p></table:table-cell>"
            "<table:table-cell/>"
            "<table:table-cell><text:p>bare</text:p></table:table-cell>"));
    EXPECT_EQ(RecordsOf(book, OdsName).first().fields, (CStringArray{u"编号"_s,
                                                                     u"50"_s,
                                                                     u"0.5"_s,
                                                                     u"2024-01-02"_s,
                                                                     u"TRUE"_s,
                                                                     u"2"_s,
                                                                     {},
                                                                     u"#REF!"_s,
                                                                     {},
                                                                     u"bare"_s}));
    using enum CellKind;
    EXPECT_EQ(CellKind::Text, test::KindsOf(book, OdsName, 0).front());
    EXPECT_EQ(test::KindsOf(book, OdsName, 0),
              (std::vector<CellKind>{CellKind::Text, Number, Number, Date, Boolean, Number, Error, Error,
                                     Empty, CellKind::Text}));
}

TEST(OdsReader, ParagraphsBlanksAndRemarksAreTakenAsSpreadsheetsShowThem)
{
    EXPECT_EQ(
        FieldsOf(
            MakeOds(Row(Text(
                "<text:p>a<text:s text:c=\"3\"/>b\n  c<text:tab/><text:span>d</text:span></text:p><text:p/>"
                "<text:p> e<text:line-break/>f</text:p>"
                "<office:annotation><text:p>no</text:p></office:annotation>"
                "<draw:frame><draw:text-box><text:p>no</text:p></draw:text-box></draw:frame>"))),
            OdsName),
        (CArray<CStringArray>{{u"a   b c\td\n\ne\nf"_s}}));
}

TEST(OdsReader, RepeatedCellsAndRowsAreCounted)
{
    const auto records = RecordsOf(
        MakeOds(Row(Text("<text:p>a</text:p>", "table:number-columns-repeated=\"3\"")) +
                Row("<table:table-cell table:number-columns-repeated=\"16384\"/>",
                    "table:number-rows-repeated=\"10\"") +
                Row("<table:table-cell table:number-columns-repeated=\"2\"/>" + Text("<text:p>b</text:p>") +
                        "<table:table-cell table:number-columns-repeated=\"16381\"/>",
                    "table:number-rows-repeated=\"2\"") +
                "<table:table-header-rows>" + Row(Text("<text:p>c</text:p>")) + "</table:table-header-rows>" +
                Row("<table:table-cell table:number-columns-repeated=\"16384\"/>",
                    "table:number-rows-repeated=\"1048562\"")),
        OdsName);
    ASSERT_EQ(records.size(), 4);
    EXPECT_EQ(records[0].fields, CStringArray(3, u"a"_s));
    EXPECT_EQ(records[1].line, 12);
    EXPECT_EQ(records[1].fields, (CStringArray{{}, {}, u"b"_s}));
    EXPECT_EQ(records[2].line, 13);
    EXPECT_EQ(records[2].fields, records[1].fields);
    EXPECT_EQ(records[3].line, 14);
    EXPECT_EQ(records[3].fields, (CStringArray{u"c"_s, {}, {}}));
}

TEST(OdsReader, SheetIsTheFirstOneOrTheNamedOne)
{
    const QByteArray book = MakeOds(Row(Text("<text:p>a</text:p>")));
    EXPECT_EQ(FieldsOf(book, OdsName), CArray<CStringArray>{{u"a"_s}});
    EXPECT_EQ(FieldsOf(book, OdsName, u"说明"_s), CArray<CStringArray>{{u"别的"_s}});
    EXPECT_EQ(RefusalOf(book, OdsName, u"没有"_s), u"没有名为“没有”的工作表，只有：构件、说明"_s);
}

TEST(OdsReader, WhatNoSheetHoldsIsRefused)
{
    const auto refusal = [](const QByteArray& rows) { return RefusalOf(MakeOds(rows), OdsName); };
    const QByteArray text = Text("<text:p>a</text:p>");
    EXPECT_TRUE(
        refusal(Row(text, "table:number-rows-repeated=\"2000000\"")).contains(u"不能超过 1048576 行"_s));
    EXPECT_TRUE(refusal(Row("<table:table-cell/>", "table:number-rows-repeated=\"2000000\"") + Row(text))
                    .contains(u"不能超过 1048576 行"_s));
    EXPECT_TRUE(refusal(Row(Text("<text:p>a</text:p>", "table:number-columns-repeated=\"20000\"")))
                    .contains(u"不能超过 16384 列"_s));
    EXPECT_EQ(refusal(Row(text) + Row(text + Text("<text:p>a</text:p>", "table:number-rows-spanned=\"3\""))),
              u"工作表“构件”第 2 行 B 列：有合并的单元格（B2:B4），请取消合并，把每个单元格都填上"_s);
    EXPECT_TRUE(refusal(Row(Value("float", "value=\"x\""))).contains(u"“x”不是数"_s));
}

TEST(OdsReader, EncryptedWorkbookIsRefused)
{
    test::Parts parts = test::OdsParts({});
    parts["content.xml"] = "\x01\x02 no XML";
    parts["META-INF/manifest.xml"] =
        "<m:manifest xmlns:m=\"m\"><m:file-entry><m:encryption-data/></m:file-entry></m:manifest>";
    EXPECT_EQ(RefusalOf(test::MakeZip(parts), OdsName), u"工作簿是加密的，请去掉密码再试"_s);
}
