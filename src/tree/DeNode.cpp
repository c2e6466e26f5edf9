#include "tree/DeNode.h"

#include "tree/Children.h"

bool DeNode::ReadData(IXMLDOMNode node)
{
    QdDeConfigNode::ReadData(node);
    tree::ReadFields(node.ToElement(), m_record, DeFields);
    return true;
}

bool DeNode::WriteData(IXMLDOMNode node)
{
    QdDeConfigNode::WriteData(node);
    tree::WriteFields(node.ToElement(), m_record, DeFields);
    return true;
}

DeNode* DeNode::Clone() const
{
    return new DeNode(*this);
}
