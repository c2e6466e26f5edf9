// A table that came from anywhere. The first byte says what the rest is: a whole file, a CSV file, or a part
// of a workbook that is otherwise in order, since hardly a change of a packed byte gets through to the XML.
#include "fuzz/FuzzSupport.h"

#include "tables/CsvText.h"
#include "tables/Record.h"
#include "tables/TableError.h"
#include "tables/ZipWriter.h"

using namespace Qt::StringLiterals;

namespace {

#define OFFICE "http://schemas.openxmlformats.org/officeDocument/2006/relationships/"

QByteArray Archive(const QList<std::pair<const char*, QByteArray>>& parts)
{
    tables::ZipWriter zip;
    for (const auto& [name, bytes] : parts) {
        zip.Begin(name);
        zip.Write(bytes);
    }
    return zip.Finish();
}

QByteArray Xlsx(const QByteArray& sheet, const QByteArray& texts, const QByteArray& styles)
{
    return Archive(
        {{"_rels/.rels", "<Relationships><Relationship Id=\"a\" Type=\"" OFFICE
                         "officeDocument\" Target=\"w.xml\"/></Relationships>"},
         {"w.xml", "<workbook xmlns:r=\"r\"><sheets><sheet name=\"s\" r:id=\"a\"/></sheets></workbook>"},
         {"_rels/w.xml.rels", "<Relationships><Relationship Id=\"a\" Type=\"" OFFICE
                              "worksheet\" Target=\"s.xml\"/><Relationship Id=\"b\" Type=\"" OFFICE
                              "sharedStrings\" Target=\"t.xml\"/><Relationship Id=\"c\" Type=\"" OFFICE
                              "styles\" Target=\"f.xml\"/></Relationships>"},
         {"s.xml", sheet},
         {"t.xml", texts},
         {"f.xml", styles}});
}

QByteArray FileOf(char kind, const QByteArray& rest)
{
    const QByteArray sheet =
        "<worksheet><sheetData><row><c t=\"s\"><v>0</v></c><c s=\"1\"><v>1</v></c></row></sheetData>"
        "</worksheet>";
    const QByteArray texts = "<sst><si><t>a</t></si></sst>";
    const QByteArray styles =
        "<styleSheet><cellXfs><xf numFmtId=\"0\"/><xf numFmtId=\"14\"/></cellXfs></styleSheet>";
    switch (kind) {
    case 's':
        return Xlsx(rest, texts, styles);
    case 't':
        return Xlsx(sheet, rest, styles);
    case 'f':
        return Xlsx(sheet, texts, rest);
    case 'o':
        return Archive(
            {{"mimetype", "application/vnd.oasis.opendocument.spreadsheet"}, {"content.xml", rest}});
    default:
        return rest;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0) return 0;
    fuzz::World& world = fuzz::World::Fresh();
    const QByteArray bytes = fuzz::Bytes(data, size);
    const CString path = u"\\project\\table"_s;
    world.Files().Put(path, FileOf(bytes.front(), bytes.sliced(1)));
    try {
        const auto reader = tables::OpenTable(path);
        qint64 line = 0;
        int rows = 0;
        CString text;
        CArray<CStringArray> kept;
        while (const tables::Row* const row = reader->Next()) {
            fuzz::Require(row->line > line, "rows come in their order");
            fuzz::Require(!row->cells.empty(), "a row has cells");
            line = row->line;
            CStringArray fields;
            for (const tables::Cell& cell : row->cells) {
                fuzz::Require(cell.kind != tables::CellKind::Empty || cell.text.isEmpty(),
                              "an empty cell has no text");
                fields.append(cell.text.toString());
            }
            if (++rows > 1000) break;
            if (!row->fault.isEmpty() || fields == CStringArray{CString()} ||
                !fields.join(u',').isValidUtf16())
                continue;
            kept.append(fields);
            text += tables::CsvLine(fields);
        }
        world.Files().Put(path, "\xEF\xBB\xBF" + text.toUtf8());
        const CArray<tables::Record> again = tables::ReadRecords(*tables::OpenTable(path));
        fuzz::Require(again.size() == kept.size(), "what is written is read back: rows");
        for (qsizetype row = 0; row < kept.size(); ++row)
            fuzz::Require(again[row].fields == kept[row], "what is written is read back: fields");
    } catch (const tables::TableError& error) {
        fuzz::Require(!error.Reason().isEmpty(), "a refusal has a reason");
    }
    return 0;
}
