#include "tables/CsvText.h"

#include "tables/NumberText.h"

#include <algorithm>

namespace tables {

using namespace Qt::StringLiterals;

namespace {

bool BeginsFormula(QStringView text)
{
    if (text.isEmpty()) return false;
    switch (text.front().unicode()) {
    case u'=':
    case u'+':
    case u'-':
    case u'@':
    case u'\t':
    case u'\r':
    case u'\n':
        return true;
    default:
        return false;
    }
}

QStringView WithoutApostrophes(QStringView text)
{
    while (text.startsWith(u'\''))
        text = text.sliced(1);
    return text;
}

void AppendField(QStringView field, CString& record)
{
    const bool isPlain = std::none_of(field.begin(), field.end(), [](QChar character) {
        return character == u',' || character == u'"' || character == u'\n' || character == u'\r';
    });
    if (isPlain) {
        record += field;
        return;
    }
    record += u'"';
    record += field.toString().replace(u"\""_s, u"\"\""_s);
    record += u'"';
}

} // namespace

bool NeedsGuard(QStringView text)
{
    return BeginsFormula(WithoutApostrophes(text)) && !IsShortestNumber(text);
}

QStringView WithoutGuard(QStringView field)
{
    if (!field.startsWith(u'\'') || !BeginsFormula(WithoutApostrophes(field))) return field;
    return field.sliced(1);
}

void AppendCsvText(QStringView text, CString& record)
{
    if (NeedsGuard(text))
        AppendField(u'\'' + text.toString(), record);
    else
        AppendField(text, record);
}

CString CsvLine(const CStringArray& texts)
{
    CString line;
    for (const CString& text : texts) {
        AppendCsvText(text, line);
        line += u',';
    }
    line.chop(1);
    return line + u"\r\n"_s;
}

} // namespace tables
