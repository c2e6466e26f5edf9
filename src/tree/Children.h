#pragma once

#include "tree/FindById.h"
#include "tree/QdDeRecords.h"
#include "tree/XmlVisitor.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <vector>

class QdDeConfigNode;

/// What the node classes share among themselves; not part of the public face.
namespace tree {

template <typename Record, std::size_t N>
void ReadFields(const IXMLDOMElement& element, Record& record,
                const std::array<RecordField<Record>, N>& fields)
{
    for (const auto& [name, field] : fields)
        record.*field = XmlVisitor::getNodeAttribute(element, name);
}

template <typename Record, std::size_t N>
void WriteFields(const IXMLDOMElement& element, const Record& record,
                 const std::array<RecordField<Record>, N>& fields)
{
    for (const auto& [name, field] : fields)
        XmlVisitor::addatt(element, name, record.*field);
}

/// Raises a counter by one and gives the new id. A file may hold the largest id there is: the counter then
/// goes on at the smallest one, as 32-bit arithmetic does, instead of ending the program.
inline int NextId(int& counter) noexcept
{
    counter = static_cast<int>(static_cast<unsigned>(counter) + 1U);
    return counter;
}

template <typename T>
void DeleteAll(std::vector<T*>& nodes)
{
    for (T* node : nodes)
        delete node;
    nodes.clear();
}

/// Deletes the nodes that `remove` picks; the others keep their order.
template <typename T, typename Predicate>
void DeleteIf(std::vector<T*>& nodes, Predicate remove)
{
    auto kept = nodes.begin();
    for (T* node : nodes) {
        if (remove(*node))
            delete node;
        else
            *kept++ = node;
    }
    nodes.erase(kept, nodes.end());
}

/// Makes a `T` below `parent` for every child of `container`, whatever its name or kind: the readers go by
/// position, so a comment in a container becomes a node with id 0 and empty fields. Each node that reads goes
/// to `add`, the others are dropped. A null container has no children.
template <typename T, typename Add>
void ReadChildren(const IXMLDOMNode& container, QdDeConfigNode* parent, Add add)
{
    if (container.IsNull()) return;
    for (IXMLDOMNode child = container.FirstChild(); child; child = child.NextSibling()) {
        auto node = std::make_unique<T>();
        node->SetParent(parent);
        if (node->ReadData(child)) add(node.release());
    }
}

/// Appends the element `container` to `parent` and in it one element `name` for each node, in list order. The
/// container is written also when the list is empty.
template <typename T>
void WriteChildren(const IXMLDOMElement& parent, const CString& container, const CString& name,
                   const std::vector<T*>& nodes)
{
    const IXMLDOMElement element = XmlVisitor::addChild(parent, container);
    for (T* node : nodes)
        node->WriteData(XmlVisitor::addChild(element, name));
}

} // namespace tree
