#include "cli/printing/JsonWriter.h"

using namespace Qt::StringLiterals;

namespace cli {

JsonWriter& JsonWriter::Key(QStringView name)
{
    StartEntry();
    Quote(name);
    m_text += m_style == Style::OneLine ? u":"_s : u": "_s;
    m_afterKey = true;
    return *this;
}

JsonWriter& JsonWriter::Text(QStringView value)
{
    StartEntry();
    Quote(value);
    return *this;
}

JsonWriter& JsonWriter::Number(qint64 value)
{
    StartEntry();
    m_text += CString::number(value);
    return *this;
}

JsonWriter& JsonWriter::Bool(bool value)
{
    StartEntry();
    m_text += value ? u"true"_s : u"false"_s;
    return *this;
}

JsonWriter& JsonWriter::Begin(QChar bracket)
{
    StartEntry();
    m_text += bracket;
    ++m_depth;
    m_first = true;
    return *this;
}

JsonWriter& JsonWriter::End(QChar bracket)
{
    --m_depth;
    if (!m_first) NewLine();
    m_text += bracket;
    m_first = false;
    return *this;
}

/// Sets what separates the next key or value from the one before it.
void JsonWriter::StartEntry()
{
    if (m_afterKey) {
        m_afterKey = false;
        return;
    }
    if (!m_first) m_text += u',';
    if (m_depth > 0) NewLine();
    m_first = false;
}

void JsonWriter::NewLine()
{
    if (m_style == Style::Indented) m_text += u'\n' + CString(2 * m_depth, u' ');
}

void JsonWriter::Quote(QStringView text)
{
    m_text += u'"';
    for (const QChar character : text) {
        if (character == u'"' || character == u'\\') {
            m_text += u'\\';
            m_text += character;
        } else if (character.unicode() < 0x20) {
            m_text += u"\\u%1"_s.arg(int{character.unicode()}, 4, 16, QChar(u'0'));
        } else {
            m_text += character;
        }
    }
    m_text += u'"';
}

} // namespace cli
