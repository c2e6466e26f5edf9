#pragma once

#include "platform/Text.h"
#include "xml/Characters.h"

#include <QtCore/QVarLengthArray>

namespace xml::detail {

/// A name, or a value, as UTF-8 that ends in a NUL; without an allocation when it is short and ASCII.
class Utf8Name
{
public:
    explicit Utf8Name(const CString& name) : m_bytes(name.size() + 1)
    {
        char* out = m_bytes.data();
        for (const QChar c : name) {
            if (c.unicode() == 0 || c.unicode() >= 0x80) {
                TakeAny(name);
                return;
            }
            *out++ = static_cast<char>(c.unicode());
        }
        *out = '\0';
    }

    const char* Text() const { return m_bytes.constData(); }
    /// Whether all of it can name an element or attribute. An unpaired surrogate has become a question mark
    /// on the way, which cannot.
    bool IsXmlName() const { return m_bytes.size() > 1 && SkipName(Text()) == Text() + m_bytes.size() - 1; }

private:
    void TakeAny(const CString& name)
    {
        const QByteArray bytes = name.toUtf8();
        m_bytes.clear();
        m_bytes.append(bytes.constData(), bytes.size() + 1);
    }

    QVarLengthArray<char, 64> m_bytes;
};

} // namespace xml::detail
