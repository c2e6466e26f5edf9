#include "xml/Writer.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace xml::detail {

namespace {

using namespace std::string_view_literals;

/// Below this depth lines are no further indented: the blanks of a very deep document would outgrow it by
/// far.
constexpr int DeepestIndent = 64;

/// What a byte becomes; empty for one that stands for itself.
using Escapes = std::array<std::string_view, 256>;

constexpr Escapes TextEscapes = [] {
    Escapes escapes{};
    escapes['&'] = "&amp;"sv;
    escapes['<'] = "&lt;"sv;
    escapes['>'] = "&gt;"sv;
    escapes['\r'] = "&#13;"sv; // a bare one would be read as a line feed
    return escapes;
}();

constexpr Escapes ValueEscapes = [] {
    Escapes escapes = TextEscapes;
    escapes['"'] = "&quot;"sv;
    escapes['\t'] = "&#9;"sv; // bare blanks other than the space would be read as spaces
    escapes['\n'] = "&#10;"sv;
    return escapes;
}();

/// The bytes that stand for themselves. The NUL behind a text is none of them.
constexpr ByteSet PlainOf(const Escapes& escapes)
{
    ByteSet plain{};
    for (std::size_t c = 1; c < plain.size(); ++c)
        plain[c] = escapes[c].empty();
    return plain;
}

constexpr ByteSet StandsInText = PlainOf(TextEscapes);
constexpr ByteSet StandsInValue = PlainOf(ValueEscapes);

void AppendEscaped(Output& out, const char* text, const Escapes& escapes, const ByteSet& plain)
{
    for (;;) {
        text = out.PutPlain(text, plain);
        if (*text == '\0') return;
        out.Put(escapes[static_cast<unsigned char>(*text)]);
        ++text;
    }
}

void AppendText(Output& out, const char* text)
{
    AppendEscaped(out, text, TextEscapes, StandsInText);
}

void AppendValue(Output& out, const char* value)
{
    AppendEscaped(out, value, ValueEscapes, StandsInValue);
}

/// A node without children, or the start tag of an element with children.
void WriteOpening(Output& out, pugi::xml_node node)
{
    switch (node.type()) {
    case pugi::node_element:
        WriteStartTag(out, node, !node.first_child());
        break;
    case pugi::node_pcdata:
        AppendText(out, node.value());
        break;
    case pugi::node_cdata:
        out.Put("<![CDATA["sv);
        out.Put(std::string_view(node.value()));
        out.Put("]]>"sv);
        break;
    case pugi::node_comment:
        out.Put("<!--"sv);
        out.Put(std::string_view(node.value()));
        out.Put("-->"sv);
        break;
    case pugi::node_pi:
        out.Put("<?"sv);
        out.Put(std::string_view(node.name()));
        if (*node.value() != '\0') out.Put(' ');
        out.Put(std::string_view(node.value()));
        out.Put("?>"sv);
        break;
    default:
        break;
    }
}

} // namespace

bool IsCharacterData(pugi::xml_node node)
{
    const pugi::xml_node_type type = node.type();
    return type == pugi::node_pcdata || type == pugi::node_cdata;
}

bool HoldsText(pugi::xml_node element)
{
    // Iterators take three calls into the engine where this takes one.
    for (pugi::xml_node child = element.first_child(); child; child = child.next_sibling())
        if (IsCharacterData(child)) return true;
    return false;
}

void WriteEndTag(Output& out, pugi::xml_node element)
{
    out.Put("</"sv);
    out.Put(std::string_view(element.name()));
    out.Put('>');
}

void WriteStartTag(Output& out, pugi::xml_node element, bool selfClosing)
{
    out.Put('<');
    out.Put(std::string_view(element.name()));
    for (pugi::xml_attribute attribute = element.first_attribute(); attribute;
         attribute = attribute.next_attribute()) {
        out.Put(' ');
        out.Put(std::string_view(attribute.name()));
        out.Put("=\""sv);
        AppendValue(out, attribute.value());
        out.Put('"');
    }
    out.Put(selfClosing ? "/>"sv : ">"sv);
}

void WriteBreak(Output& out, int depth, const Layout& layout)
{
    out.Put(layout.lineEnd);
    for (int i = 0; i < std::min(depth, DeepestIndent); ++i)
        out.Put(layout.indent);
}

void WriteNode(Output& out, pugi::xml_node node, int depth, const Layout& layout)
{
    const pugi::xml_node top = node;
    pugi::xml_node inlineElement; // the outermost open element that holds text: no breaks below it
    for (;;) {
        WriteOpening(out, node);
        if (const pugi::xml_node child = node.first_child()) {
            if (!inlineElement && HoldsText(node)) inlineElement = node;
            ++depth;
            node = child;
        } else {
            while (node != top && !node.next_sibling()) {
                node = node.parent();
                --depth;
                if (!inlineElement) WriteBreak(out, depth, layout);
                if (node == inlineElement) inlineElement = {};
                WriteEndTag(out, node);
            }
            if (node == top) return;
            node = node.next_sibling();
        }
        if (!inlineElement) WriteBreak(out, depth, layout);
    }
}

QByteArray EscapedValue(const QByteArray& value)
{
    Output out;
    AppendValue(out, value.constData());
    return std::move(out).Take();
}

} // namespace xml::detail
