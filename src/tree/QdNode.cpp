#include "tree/QdNode.h"

#include "tree/Children.h"

#include <memory>

using namespace Qt::StringLiterals;

QdNode::~QdNode()
{
    DeleteAllDe();
}

bool QdNode::AddDe(const DeStruct& record)
{
    auto node = std::make_unique<DeNode>();
    node->SetParent(this);
    node->SetRecord(record);
    node->SetId(tree::NextId(LastDeId));
    AddDe(node.release());
    return true;
}

void QdNode::AddDe(DeNode* node)
{
    m_de.push_back(node);
}

DeNode* QdNode::GetDe(int id) const
{
    return tree::FindById(m_de, id);
}

bool QdNode::ReSetDe(int id, const DeStruct& record)
{
    DeNode* node = GetDe(id);
    if (node == nullptr) return false;
    node->SetRecord(record);
    return true;
}

bool QdNode::DelDe(const std::set<int>& ids)
{
    tree::DeleteIf(m_de, [&ids](const DeNode& node) { return ids.contains(node.GetId()); });
    return true;
}

void QdNode::DeleteAllDe()
{
    tree::DeleteAll(m_de);
}

QdNode* QdNode::Clone() const
{
    auto clone = std::make_unique<QdNode>();
    clone->SetId(GetId());
    clone->SetParent(GetParent());
    clone->LastDeId = LastDeId;
    clone->m_record = m_record;
    for (const DeNode* node : m_de) {
        DeNode* child = node->Clone();
        child->SetParent(clone.get());
        clone->AddDe(child);
    }
    return clone.release();
}

bool QdNode::ReadData(IXMLDOMNode node)
{
    QdDeConfigNode::ReadData(node);
    const IXMLDOMElement element = node.ToElement();
    tree::ReadFields(element, m_record, QdFields);
    if (element.IsNull()) return true;
    tree::ReadChildren<DeNode>(element.SelectSingleNode(u"De"_s), this, [this](DeNode* child) {
        LastDeId = std::max(LastDeId, child->GetId());
        AddDe(child);
    });
    return true;
}

bool QdNode::WriteData(IXMLDOMNode node)
{
    QdDeConfigNode::WriteData(node);
    const IXMLDOMElement element = node.ToElement();
    tree::WriteFields(element, m_record, QdFields);
    // Container and children have the same name.
    tree::WriteChildren(element, u"De"_s, u"De"_s, m_de);
    return true;
}
