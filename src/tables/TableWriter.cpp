#include "tables/TableWriter.h"

#include "tables/NumberText.h"
#include "tables/TableError.h"

namespace tables {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 ProgressEvery = 1024;

} // namespace

TableWriter::TableWriter(const CString& path, WriteOptions options)
    : m_path(path), m_options(std::move(options))
{
    try {
        m_file = std::make_unique<platform::ReplacedFile>(path);
    } catch (const platform::FileError& error) {
        Fail(error.Reason());
    }
}

TableWriter::~TableWriter() = default;

void TableWriter::BeginSheet(const CString& name, const CArray<Column>& columns)
{
    StartSheet(name, columns);
    m_sheet = name;
    m_columns = columns.size();
    m_row = 1;
    for (const Column& column : columns) {
        NextCell();
        CheckText(column.heading);
        PutText(column.heading);
    }
    StopRow();
    m_column = -1;
    m_row = 2;
}

void TableWriter::NextCell()
{
    if (++m_column >= m_columns) throw std::out_of_range("more cells than columns");
}

void TableWriter::CheckText(QStringView text) const
{
    if (!text.isValidUtf16()) FailCell(u"含有无效的字符"_s);
}

void TableWriter::Text(QStringView text)
{
    NextCell();
    CheckText(text);
    text.isEmpty() ? PutEmpty() : PutText(text);
}

void TableWriter::Number(QStringView number)
{
    if (!IsShortestNumber(number))
        throw std::invalid_argument("no number: " + number.toString().toStdString());
    if (SignificantDigits(number) > ExactDigits) return Text(number);
    NextCell();
    PutNumber(number);
}

void TableWriter::Empty()
{
    NextCell();
    PutEmpty();
}

void TableWriter::Link(QStringView text, const CString& sheet, qint64 row)
{
    NextCell();
    CheckText(text);
    PutLink(text, sheet, row);
}

void TableWriter::EndRow()
{
    while (m_column + 1 < m_columns)
        Empty();
    StopRow();
    m_column = -1;
    ++m_row;
    ++m_rows;
    if (m_options.progress && m_rows % ProgressEvery == 0) m_options.progress(m_rows);
}

void TableWriter::Finish()
{
    Write(Rest());
    if (m_options.progress) m_options.progress(m_rows);
    try {
        m_file->Commit();
    } catch (const platform::FileError& error) {
        Fail(error.Reason());
    }
}

void TableWriter::Write(const QByteArray& bytes)
{
    try {
        m_file->Write(bytes);
    } catch (const platform::FileError& error) {
        Fail(error.Reason());
    }
}

void TableWriter::Fail(const CString& reason) const
{
    throw TableError(m_path, reason);
}

void TableWriter::FailCell(const CString& reason) const
{
    throw TableError(m_path, reason, {m_sheet, m_row, m_column});
}

bool IsWorkbookPath(const CString& path)
{
    return path.endsWith(u".xlsx", Qt::CaseInsensitive);
}

} // namespace tables
