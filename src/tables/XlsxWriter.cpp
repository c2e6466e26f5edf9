#include "tables/XlsxWriter.h"

#include "tables/Cell.h"
#include "tables/WorksheetLimits.h"
#include "tables/XlsxStrings.h"

#include <algorithm>
#include <utility>

namespace tables {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype HeldAtMost = qsizetype{1} << 16;
constexpr int MostLinks = 65530;
constexpr qsizetype LongestName = 31;
/// What archives of the plain kind hold of one part.
constexpr qint64 LargestSheet = qint64{4000000000};
constexpr int WidestColumn = 255;

/// Places in the list of formats below.
enum Style { HeadingStyle = 1, TextStyle = 2, LinkStyle = 3, NumberStyle = 4, DecimalStyle = 5 };
constexpr int MostDecimals = 9;

#define KTQDDE_XML "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
#define KTQDDE_MAIN "http://schemas.openxmlformats.org/spreadsheetml/2006/main"
#define KTQDDE_OFFICE "http://schemas.openxmlformats.org/officeDocument/2006/relationships"
#define KTQDDE_PACKAGE "http://schemas.openxmlformats.org/package/2006/"
#define KTQDDE_TYPE "application/vnd.openxmlformats-officedocument.spreadsheetml."

QByteArray Escaped(QStringView text)
{
    return WithEscapes(text.toString()).toHtmlEscaped().toUtf8();
}

QByteArray Styles()
{
    QByteArray formats;
    QByteArray cells =
        "<xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" borderId=\"0\" xfId=\"0\"/>"
        "<xf numFmtId=\"49\" fontId=\"1\" fillId=\"2\" borderId=\"0\" xfId=\"0\" applyNumberFormat=\"1\" "
        "applyFont=\"1\" applyFill=\"1\"/>"
        "<xf numFmtId=\"49\" fontId=\"0\" fillId=\"0\" borderId=\"0\" xfId=\"0\" applyNumberFormat=\"1\"/>"
        "<xf numFmtId=\"49\" fontId=\"2\" fillId=\"0\" borderId=\"0\" xfId=\"0\" applyNumberFormat=\"1\" "
        "applyFont=\"1\"/>"
        "<xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" borderId=\"0\" xfId=\"0\"/>";
    for (int decimals = 0; decimals <= MostDecimals; ++decimals) {
        const QByteArray id = QByteArray::number(164 + decimals);
        const QByteArray digits = decimals == 0 ? QByteArray() : '.' + QByteArray(decimals, '0');
        formats += "<numFmt numFmtId=\"" + id + "\" formatCode=\"0" + digits + "\"/>";
        cells += "<xf numFmtId=\"" + id +
                 "\" fontId=\"0\" fillId=\"0\" borderId=\"0\" xfId=\"0\" applyNumberFormat=\"1\"/>";
    }
    return KTQDDE_XML "<styleSheet xmlns=\"" KTQDDE_MAIN "\"><numFmts count=\"10\">" + formats +
           "</numFmts><fonts count=\"3\"><font><sz val=\"11\"/><name val=\"Calibri\"/><family "
           "val=\"2\"/></font>"
           "<font><b/><sz val=\"11\"/><name val=\"Calibri\"/><family val=\"2\"/></font>"
           "<font><u/><sz val=\"11\"/><color rgb=\"FF0563C1\"/><name val=\"Calibri\"/><family "
           "val=\"2\"/></font></fonts>"
           "<fills count=\"3\"><fill><patternFill patternType=\"none\"/></fill>"
           "<fill><patternFill patternType=\"gray125\"/></fill><fill><patternFill patternType=\"solid\">"
           "<fgColor rgb=\"FFE7E6E6\"/><bgColor indexed=\"64\"/></patternFill></fill></fills>"
           "<borders count=\"1\"><border><left/><right/><top/><bottom/><diagonal/></border></borders>"
           "<cellStyleXfs count=\"1\"><xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" "
           "borderId=\"0\"/></cellStyleXfs>"
           "<cellXfs count=\"15\">" +
           cells +
           "</cellXfs><cellStyles count=\"1\"><cellStyle name=\"Normal\" xfId=\"0\" "
           "builtinId=\"0\"/></cellStyles>"
           "</styleSheet>";
}

int StyleOf(const Column& column)
{
    if (column.kind == ColumnKind::Text) return TextStyle;
    return column.decimals < 0 ? NumberStyle : DecimalStyle + std::min(column.decimals, MostDecimals);
}

/// How wide a text is drawn, in digits: Chinese characters take two.
int WidthOf(QStringView text)
{
    const auto wide =
        std::count_if(text.begin(), text.end(), [](QChar unit) { return unit.unicode() >= 0x2E80; });
    return static_cast<int>(std::min<qsizetype>(text.size() + wide + 2, WidestColumn));
}

QByteArray SheetPart(qsizetype index)
{
    return "worksheets/sheet" + QByteArray::number(index + 1) + ".xml";
}

} // namespace

XlsxWriter::XlsxWriter(const CString& path, const WriteOptions& options) : TableWriter(path, options) {}

void XlsxWriter::CheckName(const CString& name) const
{
    const bool isBad = name.isEmpty() || name.size() > LongestName || name.startsWith(u'\'') ||
                       name.endsWith(u'\'') || std::any_of(name.begin(), name.end(), [](QChar character) {
                           return character < u' ' || QStringView(u"[]:*?/\\").contains(character);
                       });
    if (isBad || !name.isValidUtf16()) Fail(u"“%1”不能用作工作表名"_s.arg(name));
    if (m_sheets.contains(name, Qt::CaseInsensitive)) Fail(u"工作表“%1”重复"_s.arg(name));
}

void XlsxWriter::StartSheet(const CString& name, const CArray<Column>& columns)
{
    CheckName(name);
    if (columns.size() > MostColumns) Fail(u"工作表最多 %1 列，请写成 CSV 文件"_s.arg(MostColumns));
    EndSheet();
    m_sheets.append(name);
    m_columns = columns;
    m_columnNames.clear();
    for (qsizetype column = 0; column < columns.size(); ++column)
        m_columnNames.append(ColumnName(column).toLatin1());
    m_zip.Begin("xl/" + SheetPart(m_sheets.size() - 1));
    StartColumns();
}

void XlsxWriter::StartColumns()
{
    const QByteArray selected = m_sheets.size() == 1 ? " tabSelected=\"1\"" : "";
    m_rows = KTQDDE_XML "<worksheet xmlns=\"" KTQDDE_MAIN "\"><sheetViews><sheetView" + selected +
             " workbookViewId=\"0\"><pane ySplit=\"1\" topLeftCell=\"A2\" activePane=\"bottomLeft\" "
             "state=\"frozen\"/>"
             "</sheetView></sheetViews>";
    if (!m_columns.isEmpty()) m_rows += "<cols>";
    for (qsizetype index = 0; index < m_columns.size(); ++index) {
        const Column& column = m_columns[index];
        const int width = column.width > 0 ? std::min(column.width, WidestColumn) : WidthOf(column.heading);
        const QByteArray number = QByteArray::number(index + 1);
        // The format of a column is that of cells to come: what is typed there stays text.
        m_rows += "<col min=\"" + number + "\" max=\"" + number + "\" width=\"" + QByteArray::number(width) +
                  "\" style=\"" + QByteArray::number(StyleOf(column)) + "\" customWidth=\"1\"/>";
    }
    if (!m_columns.isEmpty()) m_rows += "</cols>";
    m_rows += "<sheetData>";
}

void XlsxWriter::BeginCell(int style)
{
    if (!std::exchange(m_isRowOpen, true)) {
        if (AtRow() > MostRows) Fail(u"工作表最多 %1 行，请写成 CSV 文件"_s.arg(MostRows));
        m_rows += "<row r=\"" + QByteArray::number(AtRow()) + "\">";
    }
    m_rows += "<c r=\"" + m_columnNames[AtColumn()] + QByteArray::number(AtRow()) + "\" s=\"" +
              QByteArray::number(style) + '"';
}

void XlsxWriter::PutStyledText(QStringView text, int style)
{
    if (text.size() > LongestCell) FailCell(u"文字超过 %1 个字符，工作簿放不下"_s.arg(LongestCell));
    BeginCell(style);
    m_rows += " t=\"inlineStr\"><is><t xml:space=\"preserve\">" + Escaped(text) + "</t></is></c>";
}

void XlsxWriter::PutText(QStringView text)
{
    PutStyledText(text, AtRow() == 1 ? HeadingStyle : TextStyle);
}

void XlsxWriter::PutNumber(QStringView number)
{
    const Column& column = m_columns[AtColumn()];
    BeginCell(column.kind == ColumnKind::Text ? NumberStyle : StyleOf(column));
    m_rows += "><v>" + number.toLatin1() + "</v></c>";
}

void XlsxWriter::PutLink(QStringView text, const CString& sheet, qint64 row)
{
    if (m_linkCount == MostLinks) return PutText(text);
    PutStyledText(text, LinkStyle);
    CString quoted = sheet;
    quoted.replace(u"'"_s, u"''"_s);
    const CString target = u"'%1'!A%2"_s.arg(quoted).arg(row);
    m_links += "<hyperlink ref=\"" + m_columnNames[AtColumn()] + QByteArray::number(AtRow()) +
               "\" location=\"" + Escaped(target) + "\"/>";
    ++m_linkCount;
}

void XlsxWriter::PutEmpty() {}

void XlsxWriter::StopRow()
{
    if (std::exchange(m_isRowOpen, false)) m_rows += "</row>";
    if (m_rows.size() >= HeldAtMost) Flush();
}

void XlsxWriter::Flush()
{
    m_size += m_rows.size();
    if (m_size > LargestSheet) Fail(u"工作表太大，请写成 CSV 文件"_s);
    m_zip.Write(m_rows);
    m_rows.resize(0);
    m_packed += m_zip.Take();
    if (m_packed.size() < HeldAtMost) return;
    Write(m_packed);
    m_packed.resize(0);
}

void XlsxWriter::EndSheet()
{
    if (m_sheets.isEmpty()) return;
    m_rows += "</sheetData>";
    if (m_linkCount > 0) m_rows += "<hyperlinks>" + m_links + "</hyperlinks>";
    // Numbers as text are meant so: no mark in every cell.
    m_rows +=
        "<ignoredErrors><ignoredError sqref=\"A1:XFD1048576\" numberStoredAsText=\"1\"/></ignoredErrors>"
        "</worksheet>";
    Flush();
    m_links.clear();
    m_linkCount = 0;
    m_size = 0;
}

QByteArray XlsxWriter::Rest()
{
    EndSheet();
    QByteArray types;
    QByteArray sheets;
    QByteArray relations;
    for (qsizetype index = 0; index < m_sheets.size(); ++index) {
        const QByteArray id = QByteArray::number(index + 1);
        types += "<Override PartName=\"/xl/" + SheetPart(index) +
                 "\" ContentType=\"" KTQDDE_TYPE "worksheet+xml\"/>";
        sheets += "<sheet name=\"" + Escaped(m_sheets[index]) + "\" sheetId=\"" + id + "\" r:id=\"rId" + id +
                  "\"/>";
        relations += "<Relationship Id=\"rId" + id + "\" Type=\"" KTQDDE_OFFICE "/worksheet\" Target=\"" +
                     SheetPart(index) + "\"/>";
    }
    m_zip.Begin("xl/workbook.xml");
    m_zip.Write(KTQDDE_XML "<workbook xmlns=\"" KTQDDE_MAIN "\" xmlns:r=\"" KTQDDE_OFFICE
                           "\"><bookViews><workbookView/></bookViews><sheets>" +
                sheets + "</sheets></workbook>");
    m_zip.Begin("xl/_rels/workbook.xml.rels");
    m_zip.Write(KTQDDE_XML "<Relationships xmlns=\"" KTQDDE_PACKAGE "relationships\">" + relations +
                "<Relationship Id=\"rIdStyles\" Type=\"" KTQDDE_OFFICE
                "/styles\" Target=\"styles.xml\"/></Relationships>");
    m_zip.Begin("xl/styles.xml");
    m_zip.Write(Styles());
    m_zip.Begin("_rels/.rels");
    m_zip.Write(KTQDDE_XML "<Relationships xmlns=\"" KTQDDE_PACKAGE
                           "relationships\"><Relationship Id=\"rId1\" Type=\"" KTQDDE_OFFICE
                           "/officeDocument\" Target=\"xl/workbook.xml\"/></Relationships>");
    m_zip.Begin("[Content_Types].xml");
    m_zip.Write(
        KTQDDE_XML
        "<Types xmlns=\"" KTQDDE_PACKAGE "content-types\"><Default Extension=\"rels\" ContentType=\""
        "application/vnd.openxmlformats-package.relationships+xml\"/><Default Extension=\"xml\" "
        "ContentType=\"application/xml\"/><Override PartName=\"/xl/workbook.xml\" ContentType=\"" KTQDDE_TYPE
        "sheet.main+xml\"/><Override PartName=\"/xl/styles.xml\" ContentType=\"" KTQDDE_TYPE
        "styles+xml\"/>" +
        types + "</Types>");
    return m_packed + m_zip.Finish();
}

} // namespace tables
