#include "tables/CsvReader.h"

#include "tables/CsvText.h"
#include "tables/TableError.h"

namespace tables {

using namespace Qt::StringLiterals;

namespace {

/// A longer record is rather a quote that nobody has closed.
constexpr qsizetype LongestRecord = qsizetype{1} << 24;

bool IsLineEnd(QChar character)
{
    return character == u'\n' || character == u'\r';
}

} // namespace

CsvReader::CsvReader(std::unique_ptr<platform::InputFile> file, const CString& path)
try : m_path(path), m_source(std::move(file), path) {
} catch (const platform::FileError& error) {
    throw TableError(path, error.Reason());
}

const Row* CsvReader::Next()
{
    if (!SkipLineEnds()) return nullptr;
    const qint64 line = m_line;
    for (;;) {
        const qsizetype start = m_at;
        m_fields.clear();
        m_row.fault.clear();
        if (ScanRecord() == Scan::Done) break;
        m_at = start;
        m_line = line;
        FillForLongRecord();
    }
    m_row.line = line;
    TakeFields();
    return &m_row;
}

/// Makes room by dropping what has been given, and reads on; at the end of the file it only takes note of it.
bool CsvReader::Fill()
{
    m_text.remove(0, m_at);
    m_at = 0;
    if (m_text.size() > LongestRecord)
        throw TableError(m_path, u"一行超过 %1 个字符，大概是引号没有结束"_s.arg(LongestRecord),
                         {{}, m_line});
    try {
        m_isAtEnd = !m_source.Append(m_text);
    } catch (const platform::FileError& error) {
        throw TableError(m_path, error.Reason(), {{}, m_line});
    }
    return !m_isAtEnd;
}

/// Reads on until there is at least twice as much of a record that is not whole: it is scanned from its
/// beginning again, and a long one is not to be scanned for every piece of the file.
void CsvReader::FillForLongRecord()
{
    const qsizetype wanted = 2 * (m_text.size() - m_at);
    while (Fill() && m_text.size() < wanted) {
    }
}

/// Goes to the next record; false when there is none.
bool CsvReader::SkipLineEnds()
{
    for (;;) {
        if (m_at == m_text.size()) {
            if (m_isAtEnd || !Fill()) return false;
            continue;
        }
        if (!IsLineEnd(m_text.at(m_at))) return true;
        // Whether a CR is alone shows the character behind it.
        if (m_at + 1 == m_text.size() && !m_isAtEnd) {
            Fill();
            continue;
        }
        const bool isPair =
            m_text.at(m_at) == u'\r' && m_at + 1 < m_text.size() && m_text.at(m_at + 1) == u'\n';
        m_at += isPair ? 2 : 1;
        ++m_line;
    }
}

CsvReader::Scan CsvReader::ScanRecord()
{
    for (;;) {
        const bool isQuoted = m_at < m_text.size() && m_text.at(m_at) == u'"';
        if ((isQuoted ? ScanQuoted() : ScanPlain()) == Scan::NeedsMore) return Scan::NeedsMore;
        if (m_at == m_text.size()) return m_isAtEnd ? Scan::Done : Scan::NeedsMore;
        if (m_text.at(m_at) != u',') return Scan::Done;
        ++m_at;
    }
}

/// A field to its comma or line end.
CsvReader::Scan CsvReader::ScanPlain()
{
    const auto* const begin = reinterpret_cast<const char16_t*>(m_text.constData());
    const char16_t* const start = begin + m_at;
    const char16_t* const end = begin + m_text.size();
    const char16_t* at = start;
    bool hasQuote = false;
    for (; at != end; ++at) {
        // Most characters lie behind the four that matter.
        if (*at > u',') continue;
        if (*at == u',' || *at == u'\n' || *at == u'\r') break;
        if (*at == u'"') hasQuote = true;
    }
    if (at == end && !m_isAtEnd) return Scan::NeedsMore;
    m_at = at - begin;
    m_fields.push_back({start - begin, m_at, false});
    if (hasQuote) m_row.fault = u"引号只能包住整个字段，字段中的引号要写两个"_s;
    return Scan::Done;
}

/// A field in quotes, and what stands behind them by mistake. A line break stays as it is written, but counts
/// as one line.
CsvReader::Scan CsvReader::ScanQuoted()
{
    const qsizetype size = m_text.size();
    Field field{m_at + 1, size, false};
    for (++m_at;; ++m_at) {
        if (m_at == size) {
            if (!m_isAtEnd) return Scan::NeedsMore;
            m_row.fault = u"引号没有结束"_s;
            m_fields.push_back(field);
            return Scan::Done;
        }
        const QChar character = m_text.at(m_at);
        if (character > u'"') continue;
        if (character == u'"') {
            if (m_at + 1 == size && !m_isAtEnd) return Scan::NeedsMore;
            if (m_at + 1 == size || m_text.at(m_at + 1) != u'"') break;
            field.hasDoubledQuotes = true;
            ++m_at;
        } else if (character == u'\n' ||
                   (character == u'\r' && (m_at + 1 == size || m_text.at(m_at + 1) != u'\n'))) {
            if (m_at + 1 == size && !m_isAtEnd) return Scan::NeedsMore;
            ++m_line;
        }
    }
    field.end = m_at++;
    m_fields.push_back(field);
    if (m_at == size) return m_isAtEnd ? Scan::Done : Scan::NeedsMore;
    if (m_text.at(m_at) == u',' || IsLineEnd(m_text.at(m_at))) return Scan::Done;
    if (ScanPlain() == Scan::NeedsMore) return Scan::NeedsMore;
    m_fields.pop_back();
    m_row.fault = u"引号之后还有文字"_s;
    return Scan::Done;
}

void CsvReader::TakeFields()
{
    m_cells.clear();
    for (Field& field : m_fields) {
        if (field.hasDoubledQuotes) Undouble(field);
        const QStringView text = QStringView(m_text).sliced(field.begin, field.end - field.begin);
        m_cells.push_back({WithoutGuard(text), text.isEmpty() ? CellKind::Empty : CellKind::Text, false});
    }
    m_row.cells = m_cells;
    const qsizetype begin = m_fields.front().begin;
    m_row.record = QStringView(m_text).sliced(begin, m_fields.back().end - begin);
}

/// Pushes the characters of a field together where its quotes are doubled.
void CsvReader::Undouble(Field& field)
{
    QChar* const text = m_text.data();
    qsizetype to = field.begin;
    for (qsizetype from = field.begin; from < field.end; ++from) {
        text[to++] = text[from];
        if (text[from] == u'"') ++from;
    }
    field.end = to;
}

} // namespace tables
