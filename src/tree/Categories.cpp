#include "tree/Categories.h"

#include "tree/XmlVisitor.h"

using namespace Qt::StringLiterals;

std::map<CString, IXMLDOMNode> tree::ChildrenByName(const IXMLDOMNode& node)
{
    std::map<CString, IXMLDOMNode> children;
    for (IXMLDOMNode child = node.FirstChild(); child; child = child.NextSibling())
        children.emplace(XmlVisitor::getNodeAttribute(child.ToElement(), u"name"_s), child);
    return children;
}
