#pragma once

#include "xml/Characters.h"

#include <QtCore/QByteArray>

#include <pugixml.hpp>

#include <cstring>
#include <string_view>
#include <utility>

/// How nodes become text.
namespace xml::detail {

/// Bytes that grow at the end, one small piece after the other.
class Output
{
public:
    explicit Output(qsizetype capacity = 0) : m_bytes(capacity + Slack, Qt::Uninitialized) {}
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;
    void Put(char c)
    {
        Reserve(1);
        *m_at++ = c;
    }
    void Put(const char* bytes, std::size_t size)
    {
        Reserve(static_cast<qsizetype>(size));
        std::memcpy(m_at, bytes, size);
        m_at += size;
    }
    void Put(std::string_view bytes) { Put(bytes.data(), bytes.size()); }
    void Put(const QByteArray& bytes) { Put(bytes.constData(), static_cast<std::size_t>(bytes.size())); }
    /// Appends what stands from `bytes` on for as long as it is in the set, which lacks the NUL, and gives
    /// the first place that is not: most pieces are so short that measuring and then copying them takes
    /// longer.
    const char* PutPlain(const char* bytes, const ByteSet& plain)
    {
        for (;;) {
            Reserve(Slack);
            char* at = m_at;
            const char* const full = at + Slack;
            while (at != full && plain[static_cast<unsigned char>(*bytes)])
                *at++ = *bytes++;
            m_at = at;
            if (at != full) return bytes;
        }
    }
    bool EndsWith(char c) const { return Size() > 0 && m_at[-1] == c; }
    /// Hands the bytes over.
    QByteArray Take() &&
    {
        m_bytes.truncate(Size());
        return std::move(m_bytes);
    }

private:
    static constexpr qsizetype Slack = 4096;

    qsizetype Size() const { return m_at - m_bytes.constData(); }
    void Reserve(qsizetype more)
    {
        if (m_end - m_at < more) Grow(more);
    }
    void Grow(qsizetype more)
    {
        const qsizetype size = Size();
        m_bytes.resize(size + more + m_bytes.size() / 2 + Slack);
        m_at = m_bytes.data() + size;
        m_end = m_bytes.data() + m_bytes.size();
    }

    QByteArray m_bytes;
    char* m_at = m_bytes.data();         ///< where the next piece goes
    char* m_end = m_at + m_bytes.size(); ///< behind the room that there is
};

struct Layout
{
    QByteArray lineEnd = "\n";
    QByteArray indent = "\t";
};

/// Appends `node` and all below it to `out`, without indent before and line end behind it. One element on a
/// line, children indented below their parents at `depth`; whatever holds text is written on one line, so
/// that its text stays as it is. Needs no stack: depth is bounded by memory alone.
void WriteNode(Output& out, pugi::xml_node node, int depth, const Layout& layout);

/// Whether a node is text or CDATA.
bool IsCharacterData(pugi::xml_node node);

/// Whether an element has text or CDATA among its children.
bool HoldsText(pugi::xml_node element);

/// Appends the start tag of an element, closed when `selfClosing`.
void WriteStartTag(Output& out, pugi::xml_node element, bool selfClosing);

void WriteEndTag(Output& out, pugi::xml_node element);

/// Appends a line end and the indent of `depth`.
void WriteBreak(Output& out, int depth, const Layout& layout);

/// `value` as it stands between double quotes.
QByteArray EscapedValue(const QByteArray& value);

} // namespace xml::detail
