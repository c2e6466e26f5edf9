#include "tables/CsvWriter.h"

#include "tables/CsvText.h"

#include <utility>

namespace tables {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype WrittenAtOnce = qsizetype{1} << 16;

} // namespace

CsvWriter::CsvWriter(const CString& path, const WriteOptions& options) : TableWriter(path, options)
{
    Write(QByteArrayLiteral("\xEF\xBB\xBF"));
}

void CsvWriter::StartSheet(const CString& /*name*/, const CArray<Column>& /*columns*/)
{
    if (std::exchange(m_hasSheet, true)) Fail(u"CSV 文件只能有一个工作表，请写成 .xlsx"_s);
}

void CsvWriter::Separate()
{
    if (AtColumn() > 0) m_lines += u',';
}

void CsvWriter::PutText(QStringView text)
{
    Separate();
    AppendCsvText(text, m_lines);
}

void CsvWriter::PutNumber(QStringView number)
{
    Separate();
    m_lines += number;
}

void CsvWriter::PutLink(QStringView text, const CString& /*sheet*/, qint64 /*row*/)
{
    PutText(text);
}

void CsvWriter::PutEmpty()
{
    Separate();
}

void CsvWriter::StopRow()
{
    m_lines += u"\r\n";
    if (m_lines.size() < WrittenAtOnce) return;
    Write(m_lines.toUtf8());
    m_lines.resize(0);
}

QByteArray CsvWriter::Rest()
{
    return m_lines.toUtf8();
}

} // namespace tables
