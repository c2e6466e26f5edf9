#pragma once

#include "platform/Text.h"
#include "xml/Characters.h"
#include "xml/Dom.h"

#include <QtCore/QVarLengthArray>

namespace xml::detail {

/// A name, or a value, as UTF-8 that ends in a NUL; without an allocation when it is short.
class Utf8Name
{
public:
    explicit Utf8Name(const CString& name) : m_bytes(3 * name.size() + 1)
    {
        char* out = m_bytes.data();
        for (const QChar c : name) {
            const unsigned value = c.unicode();
            // A NUL and the halves of larger characters are left to the toolkit.
            if (value == 0 || c.isSurrogate()) {
                TakeAny(name);
                return;
            }
            if (value < 0x80) {
                *out++ = static_cast<char>(value);
                m_isText = m_isText && (value >= 0x20 || IsBlank(static_cast<char>(value)));
                continue;
            }
            if (value < 0x800) {
                *out++ = static_cast<char>(0xC0U | value >> 6U);
            } else {
                m_isText = m_isText && value < 0xFFFE;
                *out++ = static_cast<char>(0xE0U | value >> 12U);
                *out++ = static_cast<char>(0x80U | (value >> 6U & 0x3FU));
            }
            *out++ = static_cast<char>(0x80U | (value & 0x3FU));
        }
        *out = '\0';
        m_size = out - m_bytes.data();
    }

    const char* Text() const { return m_bytes.constData(); }
    /// Whether all of it can name an element or attribute. An unpaired surrogate has become a question mark
    /// on the way, which cannot.
    bool IsXmlName() const { return m_size > 0 && SkipName(Text()) == Text() + m_size; }
    /// As `IsText` of what this was made from.
    bool IsXmlText() const { return m_isText; }

private:
    void TakeAny(const CString& name)
    {
        const QByteArray bytes = name.toUtf8();
        m_size = bytes.size();
        m_isText = IsText(name);
        m_bytes.clear();
        m_bytes.append(bytes.constData(), m_size + 1);
    }

    QVarLengthArray<char, 128> m_bytes;
    qsizetype m_size = 0;
    bool m_isText = true;
};

} // namespace xml::detail
