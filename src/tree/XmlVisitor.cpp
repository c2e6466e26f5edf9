#include "tree/XmlVisitor.h"

#include "platform/Messages.h"

using namespace Qt::StringLiterals;

IXMLDOMDocument XmlVisitor::CreateXmlDocPtr()
{
    IXMLDOMDocument document = xml::Document::Create();
    if (document.IsNull()) {
        platform::Show({.kind = platform::MessageKind::Warning,
                        .text = u"无法创建DOMDocument对象，请检查是否安装了MS XML Parser 运行库!"_s,
                        .caption = platform::MessageCaption(),
                        .owned = false});
    }
    return document;
}

IXMLDOMNode XmlVisitor::GetRootNode_C(const IXMLDOMDocument& document, const CString& name)
{
    if (IXMLDOMNode root = document.SelectSingleNode(name)) return root;
    const IXMLDOMElement created = document.CreateElement(name);
    if (created.IsNull()) return {};
    return document.AppendChild(created);
}

IXMLDOMElement XmlVisitor::addChild(const IXMLDOMElement& parent, const CString& name)
{
    const IXMLDOMElement created = CreateXmlDocPtr().CreateElement(name);
    return parent.AppendChild(created).ToElement();
}

void XmlVisitor::addatt(const IXMLDOMElement& element, const CString& name, const CString& value)
{
    element.SetAttribute(name, value);
}

CString XmlVisitor::getNodeAttribute(const IXMLDOMElement& element, const CString& name)
{
    try {
        CString value;
        element.GetAttribute(name, value);
        return value;
    } catch (...) {
        return {};
    }
}
