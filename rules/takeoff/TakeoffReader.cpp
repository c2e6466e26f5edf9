#include "rules/takeoff/TakeoffReader.h"

#include "rules/match/CellText.h"
#include "tables/TableError.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace rules {

namespace {

const CString IdColumn = u"构件编号"_s;
const CString NameColumn = u"具体构件"_s;
const CString CategoryColumn = u"类别"_s;
const CStringArray LevelColumns = {u"专业"_s, u"大类"_s, u"小类"_s};

} // namespace

TakeoffReader::TakeoffReader(const CString& path, const tables::ReadOptions& options)
    : m_path(path), m_table(tables::OpenTable(path, options))
{
    TakeHeaders();
    const auto id = ColumnOf(IdColumn);
    if (!id)
        throw tables::TableError(m_path, u"缺少列“%1”，现有的列：%2"_s.arg(IdColumn, m_headers.join(u"、"_s)),
                                 {m_table->Sheet(), m_headerLine});
    m_id = *id;
    m_name = ColumnOf(NameColumn);
    RequireCategory();
}

TakeoffReader::~TakeoffReader() = default;

std::optional<std::size_t> TakeoffReader::ColumnOf(const CString& name) const
{
    const auto found = std::find(m_known.begin(), m_known.end(), Normalised(name));
    if (found == m_known.end() || found->isEmpty()) return std::nullopt;
    return static_cast<std::size_t>(found - m_known.begin());
}

void TakeoffReader::TakeHeaders()
{
    const tables::Row* const row = m_table->Next();
    if (row == nullptr) throw tables::TableError(m_path, u"表是空的，连标题行也没有"_s, {m_table->Sheet()});
    m_headerLine = row->line;
    if (!row->fault.isEmpty()) throw tables::TableError(m_path, row->fault, {m_table->Sheet(), m_headerLine});
    for (const tables::Cell& cell : row->cells) {
        const auto column = static_cast<qsizetype>(m_known.size());
        CString known = Normalised(cell.text);
        const auto same = std::find(m_known.begin(), m_known.end(), known);
        if (!known.isEmpty() && same != m_known.end())
            throw tables::TableError(
                m_path, u"列“%1”出现了两次，前一次在第 %2 列"_s.arg(known).arg(same - m_known.begin() + 1),
                {m_table->Sheet(), m_headerLine, column});
        m_known.push_back(std::move(known));
        m_headers.append(WithoutBlanks(cell.text).toString());
    }
}

/// Finds the column of the category, or those of its three levels.
void TakeoffReader::RequireCategory()
{
    m_category = ColumnOf(CategoryColumn);
    if (m_category) return;
    CStringArray missing;
    for (std::size_t level = 0; level < m_levels.size(); ++level) {
        const CString& name = LevelColumns[static_cast<qsizetype>(level)];
        const auto column = ColumnOf(name);
        if (column)
            m_levels[level] = *column;
        else
            missing.append(u'“' + name + u'”');
    }
    if (missing.isEmpty()) return;
    const CString reason = missing.size() == LevelColumns.size()
                               ? u"缺少列“类别”（或“专业”“大类”“小类”三列），现有的列：%1"_s
                               : u"没有列“类别”，又缺少列"_s + missing.join(QString()) + u"，现有的列：%1"_s;
    throw tables::TableError(m_path, reason.arg(m_headers.join(u"、"_s)), {m_table->Sheet(), m_headerLine});
}

/// Raises an error when cells stand behind the last heading.
void TakeoffReader::CheckWidth(const tables::Row& row) const
{
    for (std::size_t i = m_known.size(); i < row.cells.size(); ++i)
        if (!WithoutBlanks(row.cells[i].text).isEmpty())
            throw tables::TableError(m_path, u"这里有值“%1”，但标题行没有这一列"_s.arg(row.cells[i].text),
                                     {m_table->Sheet(), row.line, static_cast<qsizetype>(i)});
}

/// Copies the record of a CSV file as a whole. None of its cells has a fault.
qsizetype TakeoffReader::CopyRecord(const tables::Row& read, std::size_t count, TakeoffRow& row) const
{
    const qsizetype size = read.record.size();
    row.text.resize(size + LevelRoom(size));
    QChar* const to = row.text.data();
    std::copy(read.record.begin(), read.record.end(), to);
    for (std::size_t i = 0; i < count; ++i) {
        const QStringView cell = read.cells[i].text;
        if (!cell.isEmpty()) row.cells[i] = QStringView(to + (cell.data() - read.record.data()), cell.size());
    }
    return size;
}

/// Copies the cells of a workbook's row that hold values.
qsizetype TakeoffReader::CopyCells(const tables::Row& read, std::size_t count, TakeoffRow& row) const
{
    qsizetype size = 0;
    for (std::size_t i = 0; i < count; ++i)
        size += read.cells[i].text.size();
    row.text.resize(size + LevelRoom(size));
    QChar* to = row.text.data();
    for (std::size_t i = 0; i < count; ++i) {
        CString fault = tables::FaultOf(read.cells[i]);
        if (fault.isEmpty()) {
            const QStringView cell = read.cells[i].text;
            row.cells[i] = QStringView(to, cell.size());
            to = std::copy(cell.begin(), cell.end(), to);
        } else if (!m_known[i].isEmpty())
            row.faults.push_back({m_headers[static_cast<qsizetype>(i)], std::move(fault)});
    }
    return size;
}

/// The room for the category behind cells of that size, where it has to be joined from its levels.
qsizetype TakeoffReader::LevelRoom(qsizetype size) const
{
    return m_category ? 0 : size + static_cast<qsizetype>(m_levels.size());
}

/// The category from the columns of its levels, joined behind the `used` characters of the row's text.
void TakeoffReader::JoinLevels(qsizetype used, TakeoffRow& row) const
{
    QChar* const begin = row.text.data() + used;
    QChar* to = begin;
    for (std::size_t i = 0; i < m_levels.size(); ++i) {
        if (i > 0) *to++ = u'\\';
        const QStringView level = WithoutBlanks(row.cells[m_levels[i]]);
        to = std::copy(level.begin(), level.end(), to);
    }
    row.category = QStringView(begin, to - begin);
}

bool TakeoffReader::Next(TakeoffRow& row)
{
    const tables::Row* const read = m_table->Next();
    if (read == nullptr) return false;
    row.line = read->line;
    row.faults.clear();
    if (!read->fault.isEmpty()) throw tables::TableError(m_path, read->fault, {m_table->Sheet(), row.line});
    CheckWidth(*read);
    row.cells.assign(m_known.size(), QStringView());
    const std::size_t count = std::min(read->cells.size(), m_known.size());
    const qsizetype used =
        read->record.isNull() ? CopyCells(*read, count, row) : CopyRecord(*read, count, row);
    row.id = WithoutBlanks(row.cells[m_id]);
    row.name = m_name ? row.cells[*m_name] : QStringView();
    if (m_category)
        row.category = WithoutBlanks(row.cells[*m_category]);
    else
        JoinLevels(used, row);
    return true;
}

} // namespace rules
