#pragma once

#include <host/Roles.h>
#include <xml/Dom.h>

/// The XML tool over the module's own XML layer.
class ExampleXml : public host::IXmlTool
{
public:
    bool CreateDOMObj() override;
    bool OpenXml(const CString& path) override;
    bool SelectNode(const CString& name) override;
    bool SetAttribute(const CString& name, const CString& value) override;
    bool SaveXml(const CString& path) override;

private:
    xml::Document m_document;
    xml::Element m_selected;
};
