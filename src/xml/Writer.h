#pragma once

#include <QtCore/QByteArray>

#include <pugixml.hpp>

/// How nodes become text.
namespace xml::detail {

struct Layout
{
    QByteArray lineEnd = "\n";
    QByteArray indent = "\t";
};

/// Appends `node` and all below it to `out`, without indent before and line end behind it. One element on a
/// line, children indented below their parents at `depth`; whatever holds text is written on one line, so
/// that its text stays as it is. Needs no stack: depth is bounded by memory alone.
void WriteNode(QByteArray& out, pugi::xml_node node, int depth, const Layout& layout);

/// Appends the start tag of an element, closed when `selfClosing`.
void WriteStartTag(QByteArray& out, pugi::xml_node element, bool selfClosing);

/// Appends a line end and the indent of `depth`.
void WriteBreak(QByteArray& out, int depth, const Layout& layout);

/// `value` as it stands between double quotes.
QByteArray EscapedValue(const QByteArray& value);

} // namespace xml::detail
