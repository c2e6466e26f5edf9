#pragma once

#include "support/PrintText.h"
#include "xml/Dom.h"

#include <array>
#include <ostream>

// How GoogleTest shows nodes in a failure.
namespace xml {

inline void PrintTo(NodeKind kind, std::ostream* out)
{
    constexpr std::array names{
        "Null", "Document", "Element", "Text", "CData", "Comment", "ProcessingInstruction"};
    *out << names.at(static_cast<std::size_t>(kind));
}

inline void PrintTo(const Node& node, std::ostream* out)
{
    PrintTo(node.Kind(), out);
    if (!node) return;
    *out << ' ';
    PrintTo(node.Name(), out);
}

} // namespace xml
