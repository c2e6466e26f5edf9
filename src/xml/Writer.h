#pragma once

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
    void Put(char c)
    {
        Reserve(1);
        m_bytes.data()[m_size++] = c;
    }
    void Put(const char* bytes, std::size_t size)
    {
        Reserve(static_cast<qsizetype>(size));
        std::memcpy(m_bytes.data() + m_size, bytes, size);
        m_size += static_cast<qsizetype>(size);
    }
    void Put(std::string_view bytes) { Put(bytes.data(), bytes.size()); }
    void Put(const QByteArray& bytes) { Put(bytes.constData(), static_cast<std::size_t>(bytes.size())); }
    bool EndsWith(char c) const { return m_size > 0 && m_bytes.at(m_size - 1) == c; }
    /// Hands the bytes over and is empty then.
    QByteArray Take()
    {
        m_bytes.truncate(std::exchange(m_size, 0));
        return std::move(m_bytes);
    }

private:
    static constexpr qsizetype Slack = 4096;

    void Reserve(qsizetype more)
    {
        if (m_size + more > m_bytes.size()) m_bytes.resize((m_size + more) + m_bytes.size() / 2 + Slack);
    }

    QByteArray m_bytes;
    qsizetype m_size = 0;
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
