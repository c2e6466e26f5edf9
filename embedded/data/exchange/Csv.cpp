#include "embedded/data/exchange/Csv.h"

#include <algorithm>

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

bool IsLineEnd(QChar character)
{
    return character == u'\n' || character == u'\r';
}

class Parser
{
public:
    explicit Parser(const CString& text) : m_text(text) {}

    CArray<CsvRecord> Parse()
    {
        CArray<CsvRecord> records;
        while (m_at < m_text.size()) {
            if (IsLineEnd(m_text[m_at])) {
                SkipLineEnd();
            } else {
                records.append(Record());
            }
        }
        return records;
    }

private:
    bool IsAt(QChar character) const { return m_at < m_text.size() && m_text[m_at] == character; }
    bool IsAtEnd() const { return m_at == m_text.size() || IsLineEnd(m_text[m_at]); }

    void SkipLineEnd()
    {
        const bool isPair = m_text[m_at] == u'\r' && m_at + 1 < m_text.size() && m_text[m_at + 1] == u'\n';
        m_at += isPair ? 2 : 1;
        ++m_line;
    }

    CsvRecord Record()
    {
        CsvRecord record;
        record.line = m_line;
        for (;;) {
            record.fields.append(IsAt(u'"') ? Quoted(record.fault) : Plain(record.fault));
            if (!IsAt(u',')) break;
            ++m_at;
        }
        return record;
    }

    CString Plain(CString& fault)
    {
        const qsizetype start = m_at;
        while (!IsAtEnd() && m_text[m_at] != u',')
            ++m_at;
        CString field = m_text.mid(start, m_at - start);
        if (field.contains(u'"')) fault = u"引号只能包住整个字段，字段中的引号要写两个"_s;
        return field;
    }

    CString Quoted(CString& fault)
    {
        CString field;
        ++m_at;
        for (;;) {
            if (m_at == m_text.size()) {
                fault = u"引号没有结束"_s;
                return field;
            }
            const QChar character = m_text[m_at];
            if (character == u'"') {
                ++m_at;
                if (!IsAt(u'"')) break;
            }
            TakeQuoted(character, field);
        }
        if (!IsAtEnd() && !IsAt(u',')) {
            fault = u"引号之后还有文字"_s;
            CString ignored;
            Plain(ignored);
        }
        return field;
    }

    /// A line break stays as it is written, but counts as one line.
    void TakeQuoted(QChar character, CString& field)
    {
        const qsizetype start = m_at;
        IsLineEnd(character) ? SkipLineEnd() : static_cast<void>(++m_at);
        field += QStringView(m_text).mid(start, m_at - start);
    }

    const CString& m_text;
    qsizetype m_at = 0;
    int m_line = 1;
};

CString CsvField(const CString& field)
{
    const bool isPlain = std::none_of(field.begin(), field.end(), [](QChar character) {
        return character == u',' || character == u'"' || IsLineEnd(character);
    });
    if (isPlain) return field;
    CString doubled = field;
    return u'"' + doubled.replace(u"\""_s, u"\"\""_s) + u'"';
}

} // namespace

CArray<CsvRecord> ParseCsv(const CString& text)
{
    return Parser(text).Parse();
}

CString CsvLine(const CStringArray& fields)
{
    CString line;
    for (const CString& field : fields)
        line += CsvField(field) + u',';
    line.chop(1);
    return line + u"\r\n"_s;
}

} // namespace embedded
