#include "platform/Encoding.h"
#include "tables/NumberText.h"
#include "tables/WorkbookReader.h"

#include <algorithm>
#include <optional>

namespace tables {

using namespace Qt::StringLiterals;

namespace {

/// A number of repetitions; 1 when there is none.
qint64 CountOf(QByteArrayView value)
{
    return value.isNull() ? 1 : std::clamp(value.toLongLong(), qint64{1}, qint64{1} << 40);
}

bool IsBlank(char character)
{
    return character == ' ' || character == '\t' || character == '\n' || character == '\r';
}

/// Whether the list of parts says that some are encrypted.
class Manifest final : public XmlHandler
{
public:
    bool IsEncrypted() const noexcept { return m_isEncrypted; }
    void Start(std::string_view name, const XmlAttributes& /*attributes*/) override
    {
        m_isEncrypted = m_isEncrypted || name == "encryption-data";
    }
    void End(std::string_view /*name*/) override {}
    void Text(std::string_view /*text*/) override {}

private:
    bool m_isEncrypted = false;
};

/// The names of the sheets, for whoever asks for them or for one that is not there.
class SheetNames final : public XmlHandler
{
public:
    explicit SheetNames(ZipReader& zip) { XmlStream(zip, "content.xml", *this).Run(); }
    const CStringArray& Names() const noexcept { return m_names; }
    void Start(std::string_view name, const XmlAttributes& attributes) override
    {
        if (name == "table" && m_depth++ == 0) m_names.append(platform::FromUtf8(attributes.Value("name")));
    }
    void End(std::string_view name) override
    {
        if (name == "table") --m_depth;
    }
    void Text(std::string_view /*text*/) override {}

private:
    CStringArray m_names;
    int m_depth = 0;
};

class OdsReader final : public WorkbookReader
{
public:
    OdsReader(std::unique_ptr<ZipReader> zip, const ReadOptions& options);

    CStringArray Sheets() override { return m_sheets; }

private:
    enum class Type { None, Text, Number, Date, Boolean, Error };

    /// Where the parser stands: within the sheet, a row of it, a cell of that, a paragraph of that.
    enum class Within { Nothing, Sheet, Row, Cell, Paragraph };

    static Type TypeOf(const XmlAttributes& attributes);

    void Start(std::string_view name, const XmlAttributes& attributes) override;
    void End(std::string_view name) override;
    void Text(std::string_view text) override;
    void StartRow(const XmlAttributes& attributes);
    void StartCell(const XmlAttributes& attributes, bool isCovered);
    void StartInParagraph(std::string_view name, const XmlAttributes& attributes);
    void StartParagraph();
    void EndCell();
    void Put(CellKind kind, const CString& text);
    CString Value() const;

    CStringArray m_sheets;
    Within m_within = Within::Nothing;
    bool m_isDone = false;
    int m_foreign = 0; ///< depth within what is no part of the cells: other sheets, drawings, remarks
    qint64 m_rows = 1; ///< how often the row stands
    qsizetype m_column = 0;
    qint64 m_columns = 1; ///< how often the cell stands
    Type m_type = Type::None;
    bool m_isFormula = false;
    bool m_hasParagraph = false;
    bool m_isAfterBlank = false;
    QByteArray m_value;
    QByteArray m_text;
};

OdsReader::OdsReader(std::unique_ptr<ZipReader> zip, const ReadOptions& options)
    : WorkbookReader(std::move(zip))
{
    const CString manifest = u"META-INF/manifest.xml"_s;
    if (Zip().Has(manifest)) {
        Manifest list;
        XmlStream(Zip(), manifest.toUtf8().constData(), list).Run();
        if (list.IsEncrypted()) Fail(u"工作簿是加密的，请去掉密码再试"_s);
    }
    if (options.pulse) options.pulse();
    m_sheets = SheetNames(Zip()).Names();
    const auto found = std::find_if(m_sheets.begin(), m_sheets.end(), [&](const CString& sheet) {
        return options.sheet.isEmpty() || sheet.compare(options.sheet, Qt::CaseInsensitive) == 0;
    });
    if (found == m_sheets.end()) FailSheet(options.sheet, m_sheets);
    UseSheet(*found);
    ReadRowsOf(u"content.xml"_s);
}

OdsReader::Type OdsReader::TypeOf(const XmlAttributes& attributes)
{
    // An error is told as a text, with a second type beside it that says so.
    if (attributes.Holds("value-type", "error")) return Type::Error;
    const QByteArrayView type = attributes.Value("value-type");
    if (type == "string") return Type::Text;
    if (type == "float" || type == "percentage" || type == "currency") return Type::Number;
    if (type == "date" || type == "time") return Type::Date;
    return type == "boolean" ? Type::Boolean : Type::None;
}

void OdsReader::Start(std::string_view name, const XmlAttributes& attributes)
{
    if (m_foreign > 0) {
        ++m_foreign;
        return;
    }
    switch (m_within) {
    case Within::Nothing:
        if (name != "table") return;
        if (!m_isDone && platform::FromUtf8(attributes.Value("name")) == Sheet())
            m_within = Within::Sheet;
        else
            m_foreign = 1;
        return;
    case Within::Sheet:
        if (name == "table-row") StartRow(attributes);
        if (name == "table" || name == "shapes" || name == "forms" || name == "named-expressions")
            m_foreign = 1;
        return;
    case Within::Row:
        if (name == "table-cell" || name == "covered-table-cell")
            return StartCell(attributes, name != "table-cell");
        m_foreign = 1;
        return;
    case Within::Cell:
        name == "p" ? StartParagraph() : static_cast<void>(m_foreign = 1);
        return;
    case Within::Paragraph:
        return StartInParagraph(name, attributes);
    }
}

void OdsReader::StartRow(const XmlAttributes& attributes)
{
    m_within = Within::Row;
    m_rows = CountOf(attributes.Value("number-rows-repeated"));
    m_column = 0;
    ++m_line;
    Cells().Clear();
}

void OdsReader::StartCell(const XmlAttributes& attributes, bool isCovered)
{
    m_within = Within::Cell;
    m_columns = CountOf(attributes.Value("number-columns-repeated"));
    m_type = TypeOf(attributes);
    m_isFormula = !attributes.Value("formula").isNull();
    m_hasParagraph = false;
    m_text.resize(0);
    m_value.resize(0);
    for (const std::string_view name :
         {"value", "date-value", "time-value", "boolean-value", "string-value"}) {
        const QByteArrayView value = attributes.Value(name);
        if (!value.isNull())
            AddText({value.data(), static_cast<std::size_t>(value.size())}, m_value, m_column);
    }
    if (isCovered || m_column >= MostColumns) return;
    const qint64 rows = CountOf(attributes.Value("number-rows-spanned"));
    const qint64 columns = CountOf(attributes.Value("number-columns-spanned"));
    if (rows > 1 || columns > 1)
        FailMerged(m_line, m_line + rows - 1, m_column, m_column + static_cast<qsizetype>(columns) - 1);
}

void OdsReader::StartParagraph()
{
    m_within = Within::Paragraph;
    if (m_hasParagraph) AddText("\n", m_text, m_column);
    m_hasParagraph = true;
    m_isAfterBlank = true;
}

void OdsReader::StartInParagraph(std::string_view name, const XmlAttributes& attributes)
{
    if (name == "s") {
        const qint64 count = std::min<qint64>(CountOf(attributes.Value("c")), LongestCell);
        AddText(std::string(static_cast<std::size_t>(count), ' '), m_text, m_column);
        m_isAfterBlank = false;
    }
    if (name == "tab") AddText("\t", m_text, m_column);
    if (name == "line-break") AddText("\n", m_text, m_column);
    // Of what else stands in a paragraph only the parts of its text count, which are passed through.
    if (name != "span" && name != "a" && name != "ruby" && name != "ruby-base") m_foreign = 1;
}

/// Blanks and line ends count as one blank, and as none at the beginning.
void OdsReader::Text(std::string_view text)
{
    if (m_within != Within::Paragraph || m_foreign > 0) return;
    for (std::size_t at = 0; at < text.size();) {
        if (IsBlank(text[at])) {
            if (!m_isAfterBlank) AddText(" ", m_text, m_column);
            m_isAfterBlank = true;
            ++at;
            continue;
        }
        std::size_t end = at;
        while (end < text.size() && !IsBlank(text[end]))
            ++end;
        AddText(text.substr(at, end - at), m_text, m_column);
        m_isAfterBlank = false;
        at = end;
    }
}

void OdsReader::End(std::string_view name)
{
    if (m_foreign > 0) {
        --m_foreign;
        return;
    }
    switch (m_within) {
    case Within::Paragraph:
        if (name == "p") m_within = Within::Cell;
        return;
    case Within::Cell:
        EndCell();
        m_within = Within::Row;
        return;
    case Within::Row:
        m_within = Within::Sheet;
        EndRow(m_line, m_rows);
        m_line += m_rows - 1;
        return;
    case Within::Sheet:
        if (name != "table") return;
        m_within = Within::Nothing;
        m_isDone = true;
        return;
    case Within::Nothing:
        return;
    }
}

CString OdsReader::Value() const
{
    return platform::FromUtf8(m_value.isEmpty() ? m_text : m_value);
}

void OdsReader::EndCell()
{
    switch (m_type) {
    case Type::None:
        m_isFormula ? Put(CellKind::Error, {}) : Put(CellKind::Text, platform::FromUtf8(m_text));
        break;
    case Type::Text:
        Put(CellKind::Text, Value());
        break;
    case Type::Number: {
        const std::optional<CString> number = NumberText(m_value);
        if (!number) Fail(u"“%1”不是数"_s.arg(platform::FromUtf8(m_value.left(40))), m_line, m_column);
        Put(CellKind::Number, *number);
        break;
    }
    case Type::Date:
        Put(CellKind::Date, Value().replace(u'T', u' '));
        break;
    case Type::Boolean:
        Put(CellKind::Boolean, m_value == "true" ? u"TRUE"_s : u"FALSE"_s);
        break;
    case Type::Error:
        Put(CellKind::Error, platform::FromUtf8(m_text));
        break;
    }
    m_column = static_cast<qsizetype>(std::min<qint64>(m_column + m_columns, MostColumns));
}

void OdsReader::Put(CellKind kind, const CString& text)
{
    if (text.isEmpty() && kind == CellKind::Text) return;
    if (m_column + m_columns > MostColumns) Fail(u"工作表不能超过 %1 列"_s.arg(MostColumns), m_line);
    for (qint64 repeat = 0; repeat < m_columns; ++repeat)
        Cells().Set(m_column + repeat, kind, m_isFormula, text);
}

} // namespace

std::unique_ptr<TableReader> OpenOds(std::unique_ptr<ZipReader> zip, const ReadOptions& options)
{
    return std::make_unique<OdsReader>(std::move(zip), options);
}

} // namespace tables
