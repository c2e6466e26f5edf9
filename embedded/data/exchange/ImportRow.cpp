#include "embedded/data/exchange/ImportRow.h"

#include "xml/Dom.h"

#include <algorithm>

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

/// Whether a text holds a control character, of which line breaks are some.
bool HoldsControl(const CString& text)
{
    return std::any_of(text.begin(), text.end(), [](QChar character) {
        return character.category() == QChar::Other_Control || character == QChar::LineSeparator ||
               character == QChar::ParagraphSeparator;
    });
}

} // namespace

RowRefused::RowRefused(const CString& reason) : std::runtime_error(reason.toStdString()) {}

RowRefused::~RowRefused() = default;

CString RowRefused::Reason() const
{
    return CString::fromUtf8(what());
}

ImportHeader::ImportHeader(const CArray<ImportColumn>& columns, const tables::Record& record)
    : m_fields(record.fields.size())
{
    if (!record.fault.isEmpty()) throw RowRefused(u"表头："_s + record.fault);
    for (const ImportColumn& column : columns)
        m_labels.insert(column.name, column.label);
    for (qsizetype field = 0; field < m_fields; ++field) {
        const CString title = record.fields[field].trimmed();
        if (HoldsControl(title))
            throw RowRefused(u"表头：第 %1 个列名含有换行或其他控制字符"_s.arg(field + 1));
        const auto column = std::find_if(columns.begin(), columns.end(), [&](const ImportColumn& candidate) {
            return title.compare(candidate.name, Qt::CaseInsensitive) == 0 || title == candidate.label;
        });
        if (column == columns.end()) throw RowRefused(u"表头：没有名为“%1”的列"_s.arg(title));
        if (m_fieldOf.contains(column->name)) throw RowRefused(u"表头：列“%1”重复"_s.arg(title));
        m_fieldOf.insert(column->name, field);
    }
    for (const ImportColumn& column : columns) {
        if (column.required && !m_fieldOf.contains(column.name))
            throw RowRefused(u"表头：缺少列“%1”（%2）"_s.arg(column.label, column.name));
    }
}

ImportRow::ImportRow(const ImportHeader& header, const tables::Record& record)
    : m_header(header), m_record(record)
{
    if (!record.fault.isEmpty()) throw RowRefused(record.fault);
    if (record.fields.size() != header.Fields())
        throw RowRefused(u"有 %1 个字段，表头有 %2 个"_s.arg(record.fields.size()).arg(header.Fields()));
    for (qsizetype field = 0; field < header.Fields(); ++field) {
        if (!xml::IsText(record.fields[field]))
            Refuse(header.ColumnOf(field), u"含有 XML 文件不能容纳的字符"_s);
    }
}

CString ImportRow::Text(const CString& column, const CString& absent) const
{
    const qsizetype field = m_header.FieldOf(column);
    if (field < 0) return absent;
    RefuseControl(column, m_record.fields[field]);
    return m_record.fields[field];
}

CString ImportRow::Word(const CString& column, const CString& absent) const
{
    const qsizetype field = m_header.FieldOf(column);
    if (field < 0) return absent.trimmed();
    CString word = m_record.fields[field].trimmed();
    RefuseControl(column, word);
    return word;
}

CString ImportRow::Key(const CString& column) const
{
    CString key = Word(column);
    if (key.isEmpty()) Refuse(column, u"不能为空"_s);
    return key;
}

CString ImportRow::Number(const CString& column, int least, int most, const CString& absent,
                          const CString& empty) const
{
    if (m_header.FieldOf(column) < 0) return absent;
    const CString word = Word(column);
    if (word.isEmpty()) return empty;
    bool isNumber = false;
    const int number = word.toInt(&isNumber);
    if (!isNumber || number < least || number > most)
        Refuse(column, u"应为 %1 到 %2 的整数，而不是“%3”"_s.arg(least).arg(most).arg(word));
    return CString::number(number);
}

CString ImportRow::Choice(const CString& column, const CArray<CStringArray>& choices, const CString& absent,
                          const CString& empty) const
{
    if (m_header.FieldOf(column) < 0) return absent;
    const CString word = Word(column);
    if (word.isEmpty()) return empty;
    CStringArray known;
    for (const CStringArray& words : choices) {
        if (words.contains(word, Qt::CaseInsensitive)) return words.first();
        known += words;
    }
    Refuse(column, u"应为 %1 之一，而不是“%2”"_s.arg(known.join(u"、"_s), word));
}

void ImportRow::RefuseControl(const CString& column, const CString& text) const
{
    if (HoldsControl(text)) Refuse(column, u"含有换行或其他控制字符"_s);
}

void ImportRow::Refuse(const CString& column, const CString& reason) const
{
    throw RowRefused(u"%1（%2）%3"_s.arg(m_header.LabelOf(column), column, reason));
}

} // namespace embedded
