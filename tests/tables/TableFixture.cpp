#include "TableFixture.h"

#include "platform/Paths.h"
#include "tables/ZipWriter.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace test {

namespace {

#define MAIN "http://schemas.openxmlformats.org/spreadsheetml/2006/main"
#define OFFICE "http://schemas.openxmlformats.org/officeDocument/2006/relationships"
#define RELATIONS "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">"

QByteArray Relation(const QByteArray& id, const QByteArray& type, const QByteArray& target)
{
    return "<Relationship Id=\"" + id + "\" Type=\"" OFFICE "/" + type + "\" Target=\"" + target + "\"/>";
}

QByteArray Worksheet(const QByteArray& rows, const QByteArray& behindRows)
{
    return "<worksheet xmlns=\"" MAIN "\"><sheetData>" + rows + "</sheetData>" + behindRows + "</worksheet>";
}

} // namespace

CArray<tables::Record> RecordsOf(const QByteArray& bytes, const CString& name, const CString& sheet)
{
    const TempFolder folder;
    return tables::ReadRecords(*tables::OpenTable(folder.WriteFile(name, bytes), {sheet}));
}

CArray<CStringArray> FieldsOf(const QByteArray& bytes, const CString& name, const CString& sheet)
{
    CArray<CStringArray> fields;
    for (const tables::Record& record : RecordsOf(bytes, name, sheet)) {
        EXPECT_TRUE(record.fault.isEmpty()) << record.fault.toStdString();
        fields.append(record.fields);
    }
    return fields;
}

std::vector<tables::CellKind> KindsOf(const QByteArray& bytes, const CString& name, int row)
{
    const TempFolder folder;
    const auto reader = tables::OpenTable(folder.WriteFile(name, bytes));
    const tables::Row* found = reader->Next();
    for (int skipped = 0; skipped < row && found != nullptr; ++skipped)
        found = reader->Next();
    std::vector<tables::CellKind> kinds;
    if (found == nullptr) return kinds;
    for (const tables::Cell& cell : found->cells)
        kinds.push_back(cell.kind);
    return kinds;
}

CString RefusalOf(const QByteArray& bytes, const CString& name, const CString& sheet)
{
    const TempFolder folder;
    const CString path = folder.WriteFile(name, bytes);
    try {
        tables::ReadRecords(*tables::OpenTable(path, {sheet}));
    } catch (const tables::TableError& error) {
        const CString file = platform::ToNative(path) + u'：';
        EXPECT_TRUE(error.Message().startsWith(file)) << error.what();
        return error.Message().sliced(file.size());
    }
    return u"no error"_s;
}

QByteArray MakeZip(const Parts& parts)
{
    tables::ZipWriter zip;
    for (const auto& [name, bytes] : parts) {
        zip.Begin(name.c_str());
        zip.Write(bytes);
    }
    return zip.Finish();
}

Parts XlsxParts(const QByteArray& rows, const QByteArray& behindRows)
{
    return {
        {"_rels/.rels", RELATIONS + Relation("r", "officeDocument", "xl/workbook.xml") + "</Relationships>"},
        {"xl/workbook.xml", "<workbook xmlns=\"" MAIN "\" xmlns:r=\"" OFFICE "\"><sheets>"
                            "<sheet name=\"藏\" sheetId=\"3\" state=\"hidden\" r:id=\"r3\"/><sheet "
                            "name=\"构件\" sheetId=\"1\" r:id=\"r1\"/>"
                            "<sheet name=\"说明\" sheetId=\"2\" r:id=\"r2\"/></sheets></workbook>"},
        {"xl/_rels/workbook.xml.rels",
         RELATIONS + Relation("r1", "worksheet", "worksheets/sheet1.xml") +
             Relation("r2", "worksheet", "/xl/worksheets/sheet2.xml") +
             Relation("r3", "worksheet", "worksheets/sheet2.xml") + Relation("s", "styles", "styles.xml") +
             Relation("t", "sharedStrings", "sharedStrings.xml") + "</Relationships>"},
        {"xl/worksheets/sheet1.xml", Worksheet(rows, behindRows)},
        {"xl/worksheets/sheet2.xml", Worksheet("<row><c t=\"inlineStr\"><is><t>别的</t></is></c></row>", {})},
        {"xl/sharedStrings.xml",
         "<sst xmlns=\"" MAIN
         "\"><si><t>编号</t></si><si><t>名称</t></si><si><r><t>镀锌</t></r><r><t xml:space="
         "\"preserve\"> 钢管</t></r><rPh sb=\"0\" "
         "eb=\"1\"><t>ignored</t></rPh></si><si><t>a_x000D_b_x005F_x0041_</t></si>"
         "<si><t></t></si></sst>"},
        {"xl/styles.xml", "<styleSheet xmlns=\"" MAIN
                          "\"><numFmts><numFmt numFmtId=\"164\" formatCode=\"yyyy/m/d\"/></numFmts>"
                          "<cellStyleXfs><xf numFmtId=\"14\"/></cellStyleXfs>"
                          "<cellXfs><xf numFmtId=\"0\"/><xf numFmtId=\"14\"/><xf numFmtId=\"164\"/><xf "
                          "numFmtId=\"2\"/></cellXfs>"
                          "</styleSheet>"},
    };
}

QByteArray MakeXlsx(const QByteArray& rows, const QByteArray& behindRows)
{
    return MakeZip(XlsxParts(rows, behindRows));
}

Parts OdsParts(const QByteArray& rows)
{
    return {
        {"mimetype", "application/vnd.oasis.opendocument.spreadsheet"},
        {"content.xml",
         "<office:document-content xmlns:office=\"o\" xmlns:table=\"t\" xmlns:text=\"x\" xmlns:calcext=\"c\" "
         "xmlns:draw=\"d\"><office:body><office:spreadsheet><table:table table:name=\"构件\">" +
             rows +
             "</table:table><table:table table:name=\"说明\"><table:table-row><table:table-cell "
             "office:value-type=\"string\"><text:p>别的</text:p></table:table-cell></table:table-row></"
             "table:table>"
             "</office:spreadsheet></office:body></office:document-content>"}};
}

QByteArray MakeOds(const QByteArray& rows)
{
    return MakeZip(OdsParts(rows));
}

} // namespace test
