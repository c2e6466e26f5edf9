#include "tables/WorkbookReader.h"

#include <QtCore/QStringDecoder>

#include <algorithm>

namespace tables {

using namespace Qt::StringLiterals;

namespace {

/// Bytes of a cell's text in UTF-8 while it is gathered: more than spreadsheets can hold, for other writers.
constexpr qsizetype MostCellBytes = qsizetype{1} << 22;
/// Of all texts of a row: a small file may inflate to columns that are each as long as a cell may be.
constexpr qsizetype LongestRow = qsizetype{1} << 24;

} // namespace

void RowBuilder::Clear()
{
    m_slots.clear();
    m_texts.resize(0);
}

void RowBuilder::Put(qsizetype column, const Slot& slot)
{
    const auto index = static_cast<std::size_t>(column);
    if (m_slots.size() <= index) m_slots.resize(index + 1);
    m_slots[index] = slot;
}

void RowBuilder::SetUtf8(qsizetype column, CellKind kind, bool isFormula, QByteArrayView utf8)
{
    if (utf8.isEmpty() && kind == CellKind::Text) return;
    using Flag = QStringConverter::Flag;
    QStringDecoder decoder(QStringDecoder::Utf8, Flag::Stateless | Flag::ConvertInitialBom);
    const qsizetype begin = m_texts.size();
    m_texts.resize(begin + decoder.requiredSpace(utf8.size()));
    QChar* const start = m_texts.data() + begin;
    const qsizetype length = decoder.appendToBuffer(start, utf8) - start;
    m_texts.truncate(begin + length);
    Put(column, {kind, isFormula, {}, begin, length});
}

void RowBuilder::Set(qsizetype column, CellKind kind, bool isFormula, const CString& text)
{
    if (text.isEmpty() && kind == CellKind::Text) return;
    const qsizetype begin = m_texts.size();
    m_texts += text;
    Put(column, {kind, isFormula, {}, begin, text.size()});
}

void RowBuilder::SetLasting(qsizetype column, CellKind kind, bool isFormula, QStringView text)
{
    if (!text.isEmpty()) Put(column, {kind, isFormula, text});
}

const Row* RowBuilder::Finish(qint64 line, qsizetype width)
{
    m_cells.clear();
    for (const Slot& slot : m_slots) {
        const QStringView own = QStringView(m_texts).sliced(slot.begin, slot.length);
        m_cells.push_back({slot.lasting.isNull() ? own : slot.lasting, slot.kind, slot.isFormula});
    }
    if (m_cells.size() < static_cast<std::size_t>(width)) m_cells.resize(static_cast<std::size_t>(width));
    m_row.line = line;
    m_row.cells = m_cells;
    return &m_row;
}

WorkbookReader::WorkbookReader(std::unique_ptr<ZipReader> zip) : m_owned(std::move(zip)), m_zip(*m_owned) {}

void WorkbookReader::ReadRowsOf(const CString& part)
{
    XmlHandler& handler = *this;
    m_stream = std::make_unique<XmlStream>(m_zip, part.toUtf8().constData(), handler);
}

const Row* WorkbookReader::Next()
{
    if (m_repeats > 0) {
        --m_repeats;
        return m_cells.Finish(++m_given, m_width);
    }
    m_cells.Clear();
    if (!m_stream || !m_stream->Run()) {
        if (m_stream) AtEnd();
        m_stream.reset();
        return nullptr;
    }
    const Row* const row = m_cells.Finish(m_given, m_width);
    if (m_first == 0) {
        m_first = m_given;
        m_width = static_cast<qsizetype>(row->cells.size());
    }
    return row;
}

void WorkbookReader::AtEnd() {}

void WorkbookReader::EndRow(qint64 line, qint64 count)
{
    if (m_cells.IsEmpty()) return;
    if (line + count - 1 > MostRows) Fail(u"工作表不能超过 %1 行"_s.arg(MostRows), line);
    m_given = line;
    m_repeats = count - 1;
    m_stream->Pause();
}

void WorkbookReader::TakeMerged(qint64 top, qint64 bottom, qsizetype left, qsizetype right) const
{
    const bool isOne = top == bottom && left == right;
    if (isOne || m_first == 0 || bottom < m_first || top > m_given || left >= m_width) return;
    FailMerged(top, bottom, left, right);
}

void WorkbookReader::FailMerged(qint64 top, qint64 bottom, qsizetype left, qsizetype right) const
{
    const CString range =
        ColumnName(left) + CString::number(top) + u':' + ColumnName(right) + CString::number(bottom);
    Fail(u"有合并的单元格（%1），请取消合并，把每个单元格都填上"_s.arg(range), top, left);
}

void WorkbookReader::AddText(std::string_view text, QByteArray& to, qsizetype column) const
{
    if (to.size() + static_cast<qsizetype>(text.size()) > MostCellBytes)
        Fail(u"单元格的文字过长"_s, m_line, column);
    if (m_cells.Length() + to.size() > LongestRow) Fail(u"一行的文字过长"_s, m_line, column);
    to.append(text.data(), static_cast<qsizetype>(text.size()));
}

void WorkbookReader::Fail(const CString& reason, qint64 line, qsizetype column) const
{
    throw TableError(m_zip.Path(), reason, {m_sheet, line, column});
}

void WorkbookReader::FailSheet(const CString& wanted, const CStringArray& known) const
{
    if (known.isEmpty()) Fail(u"工作簿中没有工作表"_s);
    Fail(u"没有名为“%1”的工作表，只有：%2"_s.arg(wanted, known.join(u"、"_s)));
}

} // namespace tables
