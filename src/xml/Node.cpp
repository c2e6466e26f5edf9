#include "xml/DocumentData.h"
#include "xml/Utf8Name.h"

#include <cstring>

using namespace Qt::StringLiterals;

namespace xml {

namespace detail {

Node Access::MakeNode(const std::shared_ptr<DocumentData>& data, pugi::xml_node node)
{
    return node ? Node(data, node.internal_object()) : Node();
}

Element Access::MakeElement(const std::shared_ptr<DocumentData>& data, pugi::xml_node node)
{
    return node ? Element(data, node.internal_object()) : Element();
}

Element Access::MakeNoted(const std::shared_ptr<DocumentData>& data)
{
    return Element(data, data->NotedKey());
}

Document Access::MakeDocument(const std::shared_ptr<DocumentData>& data)
{
    return Document(data, data.get());
}

Node Access::Follow(const Node& node)
{
    Node current = node;
    while (const DocumentData::Place* place = current.m_document->PlaceOf(current.m_node)) {
        std::shared_ptr<DocumentData> document = place->document.lock();
        if (!document) break;
        current = Node(std::move(document), place->node);
    }
    return current;
}

void Access::CheckNotNull(const Node& node, QStringView operation)
{
    if (node.IsNull()) throw PointerError(operation.toString());
}

pugi::xml_node Access::Require(const Node& node, QStringView operation)
{
    CheckNotNull(node, operation);
    return Get(node);
}

} // namespace detail

using detail::Access;
using detail::Utf8Name;

namespace {

/// A document takes one element, and comments and instructions around it.
void CheckPlaceInDocument(const Node& document, const Node& child)
{
    const NodeKind kind = child.Kind();
    if (kind == NodeKind::Text || kind == NodeKind::CData) throw Error(u"XML 文档的根元素之外不能有文字"_s);
    const Node root = document.FirstChild();
    if (kind == NodeKind::Element && root && !(root == child)) throw Error(u"XML 文档只能有一个根元素"_s);
}

/// Refuses a place that cannot take a child.
void CheckPlace(const Node& parent, const Node& child)
{
    const NodeKind kind = parent.Kind();
    if (kind != NodeKind::Element && kind != NodeKind::Document) throw Error(u"这种 XML 节点不能有子节点"_s);
    if (child.Kind() == NodeKind::Document) throw Error(u"XML 文档不能放入节点"_s);
    if (kind == NodeKind::Document) CheckPlaceInDocument(parent, child);
    if (Access::Data(parent) != Access::Data(child)) return;
    const pugi::xml_node moved = Access::Get(child);
    for (pugi::xml_node above = Access::Get(parent); above; above = above.parent())
        if (above == moved) throw Error(u"XML 节点不能放入它自己之下"_s);
}

} // namespace

NodeKind Node::Kind() const
{
    if (IsNull()) return NodeKind::Null;
    if (m_node == m_document.get()) return NodeKind::Document;
    if (Access::HasMoved(*this)) return Access::Follow(*this).Kind();
    if (Access::IsNoted(*this)) return NodeKind::Element;
    switch (Access::Get(*this).type()) {
    case pugi::node_element:
        return NodeKind::Element;
    case pugi::node_cdata:
        return NodeKind::CData;
    case pugi::node_comment:
        return NodeKind::Comment;
    case pugi::node_pi:
        return NodeKind::ProcessingInstruction;
    default:
        return NodeKind::Text;
    }
}

CString Node::Name() const
{
    if (Access::HasMoved(*this)) return Access::Follow(*this).Name();
    return m_document->TagOf(Access::Require(*this, u"Name"));
}

Element Node::ToElement() const&
{
    return Node(*this).ToElement();
}

Element Node::ToElement() &&
{
    if (Access::HasMoved(*this)) *this = Access::Follow(*this);
    if (Kind() != NodeKind::Element) return {};
    void* const node = Access::Get(*this).internal_object();
    return Element(std::move(m_document), node);
}

Node Node::FirstChild() const
{
    if (Access::HasMoved(*this)) return Access::Follow(*this).FirstChild();
    const pugi::xml_node node = Access::Require(*this, u"FirstChild");
    if (m_node == m_document.get()) return Access::MakeNode(m_document, m_document->RootElement());
    m_document->EnsureLoaded(node);
    return Access::MakeNode(m_document, node.first_child());
}

Node Node::NextSibling() const
{
    if (Access::HasMoved(*this)) return Access::Follow(*this).NextSibling();
    const pugi::xml_node node = Access::Require(*this, u"NextSibling");
    if (Kind() == NodeKind::Document || m_document->StandsAlone(node)) return {};
    return Access::MakeNode(m_document, node.next_sibling());
}

Node Node::SelectSingleNode(const CString& name) const
{
    if (Access::HasMoved(*this)) return Access::Follow(*this).SelectSingleNode(name);
    const pugi::xml_node node = Access::Require(*this, u"SelectSingleNode");
    m_document->EnsureLoaded(node);
    const QByteArray wanted = name.toUtf8();
    for (const pugi::xml_node child : node)
        if (child.type() == pugi::node_element && wanted == child.name())
            return Access::MakeNode(m_document, child);
    return {};
}

bool Node::operator==(const Node& other) const
{
    if (Access::HasMoved(*this)) return Access::Follow(*this) == other;
    if (Access::HasMoved(other)) return *this == Access::Follow(other);
    return Access::Get(*this) == Access::Get(other);
}

Node Node::AppendChild(const Node& child) const
{
    if (Access::HasMoved(*this)) return Access::Follow(*this).AppendChild(child);
    if (Access::HasMoved(child)) return AppendChild(Access::Follow(child));
    pugi::xml_node parent = Access::Require(*this, u"AppendChild");
    if (child.IsNull()) throw PointerError(u"AppendChild"_s);
    CheckPlace(*this, child);
    m_document->EnsureLoaded(parent);
    m_document->TouchContent(parent);
    const std::shared_ptr<detail::DocumentData>& source = Access::Data(child);
    pugi::xml_node placed;
    if (source == m_document) {
        source->TouchContent(Access::Get(child));
        placed = parent.append_move(Access::Get(child));
    } else if (Access::IsNoted(child) && source->IsOnlyNoted()) {
        placed = parent.append_child(source->NotedName());
        m_document->MadeBare(placed);
        source->NotedMovedAway(placed, m_document);
    } else {
        const pugi::xml_node former = Access::Get(child);
        source->TouchContent(former);
        source->EnsureWhole(former);
        placed = parent.append_copy(former);
        if (placed) source->MovedAway(Access::Key(child), former, placed, m_document);
        source->Release(former);
    }
    if (!placed) throw std::bad_alloc();
    m_document->Touched(placed);
    return Access::MakeNode(m_document, placed);
}

void Node::RemoveChild(const Node& child) const
{
    if (Access::HasMoved(*this)) return Access::Follow(*this).RemoveChild(child);
    if (Access::HasMoved(child)) return RemoveChild(Access::Follow(child));
    const pugi::xml_node parent = Access::Require(*this, u"RemoveChild");
    const pugi::xml_node given = Access::Require(child, u"RemoveChild");
    if (given.parent() != parent) throw Error(u"要移除的 XML 节点不在这里"_s);
    m_document->TouchContent(parent);
    m_document->Release(given);
}

bool Element::GetAttribute(const CString& name, CString& value) const
{
    if (Access::HasMoved(*this)) return Access::Follow(*this).ToElement().GetAttribute(name, value);
    const pugi::xml_node node = Access::Require(*this, u"GetAttribute");
    const pugi::xml_attribute attribute = m_document->FindAttribute(node, m_document->NameOf(name));
    if (!attribute) return false;
    value = m_document->ValueOf(attribute);
    return true;
}

void Element::SetAttribute(const CString& name, const CString& value) const
{
    if (Access::HasMoved(*this)) return Access::Follow(*this).ToElement().SetAttribute(name, value);
    pugi::xml_node node = Access::Require(*this, u"SetAttribute");
    const detail::KnownName& key = m_document->NameOf(name);
    if (!key.isXmlName) throw Error(u"“%1”不能作为 XML 属性名"_s.arg(name));
    const Utf8Name bytes(value);
    if (!bytes.IsXmlText()) throw Error(u"属性“%1”的值含有 XML 不允许的字符"_s.arg(name));
    m_document->TouchTag(node);
    pugi::xml_attribute attribute = m_document->AttributeToSet(node, key);
    if (!attribute.set_value(bytes.Text())) throw std::bad_alloc();
}

} // namespace xml
