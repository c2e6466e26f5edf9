#pragma once

#include "platform/Export.h"
#include "xml/Dom.h"

/// The operations through which every node of the tree touches XML. All static, no data.
class KTQDDE_EXPORT XmlVisitor
{
public:
    XmlVisitor() = delete;

    /// A new document. When no engine can be had it says so in a warning box without an owner and gives null.
    static IXMLDOMDocument CreateXmlDocPtr();

    /// The document's element of that name, made and appended if it is missing; null if it cannot be had.
    /// Raises `xml::Error` when the document already has another document element or the name is no XML name.
    static IXMLDOMNode GetRootNode_C(const IXMLDOMDocument& document, const CString& name);

    /// A new element, appended as last child of `parent`. It is made in a document of its own before the
    /// parent is looked at, so an invalid name is reported first. A null parent raises `xml::PointerError`.
    static IXMLDOMElement addChild(const IXMLDOMElement& parent, const CString& name);

    /// Sets an attribute, keeping its place when it is already there. Unlike `getNodeAttribute` it catches
    /// nothing: a null element raises `xml::PointerError`.
    static void addatt(const IXMLDOMElement& element, const CString& name, const CString& value);

    /// The value of an attribute, or the empty text on any failure: no such attribute, a null element. Never
    /// raises. So a missing text reads as "", a missing number as 0 and a missing flag as false.
    static CString getNodeAttribute(const IXMLDOMElement& element, const CString& name);
};
