#include "tree/QdDeConfigNode.h"

#include "platform/Numbers.h"
#include "tree/XmlVisitor.h"

using namespace Qt::StringLiterals;

QdDeConfigNode::QdDeConfigNode() : m_id(0), m_parent(nullptr) {}

QdDeConfigNode::QdDeConfigNode(const QdDeConfigNode& other) = default;
QdDeConfigNode& QdDeConfigNode::operator=(const QdDeConfigNode& other) = default;

bool QdDeConfigNode::ReadData(IXMLDOMNode node)
{
    m_id = platform::_wtoi(XmlVisitor::getNodeAttribute(node.ToElement(), u"id"_s));
    return true;
}

bool QdDeConfigNode::WriteData(IXMLDOMNode node)
{
    XmlVisitor::addatt(node.ToElement(), u"id"_s, CString::number(m_id));
    return true;
}
