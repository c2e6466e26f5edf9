#include "platform/Encoding.h"
#include "tables/NumberText.h"
#include "tables/WorkbookReader.h"
#include "tables/XlsxSheets.h"
#include "tables/XlsxStrings.h"
#include "tables/XlsxStyles.h"

#include <algorithm>
#include <optional>

namespace tables {

using namespace Qt::StringLiterals;

namespace {

/// A cell's place as worksheets write it.
struct Reference
{
    qint64 line = 0; ///< one-based
    qsizetype column = 0;
};

/// Takes B5 or $B$5 apart; nothing for what is no place of a worksheet.
std::optional<Reference> ParseReference(QByteArrayView text)
{
    Reference reference;
    qsizetype column = 0;
    bool hasDigits = false;
    for (const char character : text) {
        if (character == '$') continue;
        const bool isDigit = character >= '0' && character <= '9';
        const char upper =
            character >= 'a' && character <= 'z' ? static_cast<char>(character - 32) : character;
        if (isDigit) {
            reference.line = reference.line * 10 + (character - '0');
            hasDigits = true;
        } else if (!hasDigits && upper >= 'A' && upper <= 'Z') {
            column = column * 26 + (upper - 'A' + 1);
        } else {
            return std::nullopt;
        }
        if (column > MostColumns || reference.line > MostRows) return std::nullopt;
    }
    if (column == 0 || reference.line == 0) return std::nullopt;
    reference.column = column - 1;
    return reference;
}

/// A date as ISO 8601 has it, as the other dates are told.
CString FromIsoDate(const QByteArray& value)
{
    CString text = CString::fromUtf8(value);
    text.replace(u'T', u' ');
    if (text.endsWith(u'Z')) text.chop(1);
    if (text.endsWith(u" 00:00:00")) text.chop(9);
    return text;
}

class XlsxReader final : public WorkbookReader
{
public:
    XlsxReader(std::unique_ptr<ZipReader> zip, const ReadOptions& options);

    CStringArray Sheets() override;

private:
    enum class Type { Number, Shared, Result, Inline, Boolean, Error, Date };

    static Type TypeOf(QByteArrayView name);
    const XlsxParts::Sheet& Choose(const CString& wanted) const;

    void Start(std::string_view name, const XmlAttributes& attributes) override;
    void End(std::string_view name) override;
    void Text(std::string_view text) override;
    void StartRow(const XmlAttributes& attributes);
    void StartCell(const XmlAttributes& attributes);
    void StartInCell(std::string_view name);
    void EndCell();
    void TakeNumber();
    void TakeShared();
    void TakeMerge(QByteArrayView range) const;

    XlsxParts m_parts;
    XlsxStrings m_strings;
    XlsxStyles m_styles;
    bool m_isInRow = false;
    bool m_isInCell = false;
    bool m_isInValue = false;
    bool m_hasValue = false;
    bool m_isFormula = false;
    int m_reading = 0; ///< depth of what tells how a text is read out
    qsizetype m_column = -1;
    std::size_t m_style = 0;
    Type m_type = Type::Number;
    QByteArray m_value;
};

XlsxReader::XlsxReader(std::unique_ptr<ZipReader> zip, const ReadOptions& options)
    : WorkbookReader(std::move(zip)), m_parts(ReadXlsxParts(Zip()))
{
    const XlsxParts::Sheet& sheet = Choose(options.sheet);
    if (!m_parts.styles.isEmpty() && Zip().Has(m_parts.styles)) m_styles.Read(Zip(), m_parts.styles);
    if (!m_parts.strings.isEmpty() && Zip().Has(m_parts.strings))
        m_strings.Read(Zip(), m_parts.strings, options.pulse);
    UseSheet(sheet.name);
    ReadRowsOf(sheet.part);
}

CStringArray XlsxReader::Sheets()
{
    CStringArray names;
    for (const XlsxParts::Sheet& sheet : m_parts.sheets)
        names.append(sheet.name);
    return names;
}

const XlsxParts::Sheet& XlsxReader::Choose(const CString& wanted) const
{
    const auto& sheets = m_parts.sheets;
    const auto found = std::find_if(sheets.begin(), sheets.end(), [&](const XlsxParts::Sheet& sheet) {
        if (wanted.isEmpty()) return !sheet.isHidden;
        return sheet.name.compare(wanted, Qt::CaseInsensitive) == 0;
    });
    if (found != sheets.end()) return *found;
    if (wanted.isEmpty() && !sheets.empty()) return sheets.front();
    CStringArray known;
    for (const XlsxParts::Sheet& sheet : sheets)
        known.append(sheet.name);
    FailSheet(wanted, known);
}

XlsxReader::Type XlsxReader::TypeOf(QByteArrayView name)
{
    if (name == "s") return Type::Shared;
    if (name == "str") return Type::Result;
    if (name == "inlineStr") return Type::Inline;
    if (name == "b") return Type::Boolean;
    if (name == "e") return Type::Error;
    if (name == "d") return Type::Date;
    return Type::Number;
}

void XlsxReader::Start(std::string_view name, const XmlAttributes& attributes)
{
    if (m_isInCell) return StartInCell(name);
    if (name == "c") return StartCell(attributes);
    if (name == "row") return StartRow(attributes);
    if (name == "mergeCell") TakeMerge(attributes.Value("ref"));
}

void XlsxReader::StartRow(const XmlAttributes& attributes)
{
    const QByteArrayView number = attributes.Value("r");
    const qint64 line = number.isNull() ? m_line + 1 : number.toLongLong();
    if (line > MostRows) Fail(u"工作表不能超过 %1 行"_s.arg(MostRows), line);
    // A row within a row would be given twice, and in between another one.
    if (m_isInRow || line <= m_line) Fail(u"行号无效或者不按顺序，工作表损坏"_s, m_line);
    m_line = line;
    m_column = -1;
    m_isInRow = true;
    Cells().Clear();
}

void XlsxReader::StartCell(const XmlAttributes& attributes)
{
    const QByteArrayView place = attributes.Value("r");
    ++m_column;
    if (!place.isNull()) {
        const std::optional<Reference> reference = ParseReference(place);
        if (!reference) Fail(u"单元格的位置“%1”无效，工作表损坏"_s.arg(CString::fromUtf8(place)), m_line);
        m_column = reference->column;
    }
    if (m_column >= MostColumns) Fail(u"工作表不能超过 %1 列"_s.arg(MostColumns), m_line);
    m_type = TypeOf(attributes.Value("t"));
    m_style = static_cast<std::size_t>(std::max(0, attributes.Value("s").toInt()));
    m_isInCell = true;
    m_hasValue = m_isFormula = m_isInValue = false;
    m_value.resize(0);
}

void XlsxReader::StartInCell(std::string_view name)
{
    if (name == "f") m_isFormula = true;
    if (name == "rPh") ++m_reading;
    m_isInValue = name == "v" || (name == "t" && m_reading == 0);
    m_hasValue = m_hasValue || m_isInValue;
}

void XlsxReader::Text(std::string_view text)
{
    if (m_isInValue) AddText(text, m_value, m_column);
}

void XlsxReader::End(std::string_view name)
{
    m_isInValue = false;
    if (name == "rPh" && m_reading > 0) --m_reading;
    if (name == "c" && m_isInCell) {
        m_isInCell = false;
        EndCell();
    }
    if (name == "row" && m_isInRow && !m_isInCell) {
        m_isInRow = false;
        EndRow(m_line);
    }
}

void XlsxReader::EndCell()
{
    const bool isText = m_type == Type::Result || m_type == Type::Inline;
    if (m_isFormula && (!m_hasValue || (m_value.isEmpty() && !isText)))
        return Cells().SetUtf8(m_column, CellKind::Error, true, {});
    switch (m_type) {
    case Type::Number:
        return TakeNumber();
    case Type::Shared:
        return TakeShared();
    case Type::Result:
    case Type::Inline:
        if (!m_value.contains("_x")) return Cells().SetUtf8(m_column, CellKind::Text, m_isFormula, m_value);
        return Cells().Set(m_column, CellKind::Text, m_isFormula,
                           WithoutEscapes(platform::FromUtf8(m_value)));
    case Type::Boolean:
        return Cells().SetUtf8(m_column, CellKind::Boolean, m_isFormula,
                               m_value.trimmed() == "1" || m_value == "true" ? "TRUE" : "FALSE");
    case Type::Error:
        return Cells().SetUtf8(m_column, CellKind::Error, m_isFormula, m_value);
    case Type::Date:
        return Cells().Set(m_column, CellKind::Date, m_isFormula, FromIsoDate(m_value));
    }
}

void XlsxReader::TakeNumber()
{
    if (m_value.isEmpty()) return;
    const bool isDate = m_styles.IsDate(m_style);
    // Most numbers are stored as they are wanted.
    // One of so few characters has no digits that it might not keep.
    if (!isDate && m_value.size() <= ExactDigits && IsShortestNumber(QByteArrayView(m_value)))
        return Cells().SetUtf8(m_column, CellKind::Number, m_isFormula, m_value);
    const std::optional<CString> number = NumberText(m_value);
    if (!number) Fail(u"“%1”不是数"_s.arg(CString::fromUtf8(m_value.left(40))), m_line, m_column);
    const CString date = isDate ? DateText(number->toDouble(), m_parts.countsFrom1904) : CString();
    if (date.isEmpty())
        Cells().Set(m_column, CellKind::Number, m_isFormula, *number);
    else
        Cells().Set(m_column, CellKind::Date, m_isFormula, date);
}

void XlsxReader::TakeShared()
{
    if (m_value.isEmpty()) return;
    bool isNumber = false;
    const qulonglong index = m_value.trimmed().toULongLong(&isNumber);
    if (!isNumber || index >= m_strings.Count()) Fail(u"单元格的文字不存在，工作簿损坏"_s, m_line, m_column);
    Cells().SetLasting(m_column, CellKind::Text, m_isFormula, m_strings.At(static_cast<std::size_t>(index)));
}

void XlsxReader::TakeMerge(QByteArrayView range) const
{
    const qsizetype colon = range.indexOf(':');
    if (colon < 0) return;
    const auto from = ParseReference(range.first(colon));
    const auto to = ParseReference(range.sliced(colon + 1));
    if (from && to) TakeMerged(from->line, to->line, from->column, to->column);
}

} // namespace

std::unique_ptr<TableReader> OpenXlsx(std::unique_ptr<ZipReader> zip, const ReadOptions& options)
{
    return std::make_unique<XlsxReader>(std::move(zip), options);
}

} // namespace tables
