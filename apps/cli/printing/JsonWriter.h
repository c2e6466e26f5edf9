#pragma once

#include "platform/Text.h"

#include <QtCore/QByteArray>

namespace cli {

/// Composes JSON text with the keys in the order in which they are written, which is what makes it readable
/// for people. The caller keeps the nesting right.
class JsonWriter
{
public:
    enum class Style {
        OneLine,
        Indented, ///< every entry on a line of its own
    };

    explicit JsonWriter(Style style) : m_style(style) {}

    JsonWriter& BeginObject() { return Begin(u'{'); }
    JsonWriter& EndObject() { return End(u'}'); }
    JsonWriter& BeginArray() { return Begin(u'['); }
    JsonWriter& EndArray() { return End(u']'); }
    /// Inside an object, in front of each value.
    JsonWriter& Key(QStringView name);
    JsonWriter& Text(QStringView value);
    JsonWriter& Number(qint64 value);
    JsonWriter& Bool(bool value);

    /// What has been composed, with a line break at the end.
    CString Result() const { return m_text + u'\n'; }

private:
    JsonWriter& Begin(QChar bracket);
    JsonWriter& End(QChar bracket);
    void StartEntry();
    void NewLine();
    void Quote(QStringView text);

    Style m_style;
    CString m_text;
    int m_depth = 0;
    bool m_first = true; ///< whether the innermost list is still empty
    bool m_afterKey = false;
};

} // namespace cli
