#pragma once

#include "host/Roles.h"
#include "xml/Dom.h"

namespace test {

class MemoryHost;

/// The XML tool of the in-memory host, over the XML engine of the module. Any of its operations can be told
/// to fail by `MemoryHost::Fail`. The host must outlive it.
class MemoryXmlTool : public host::IXmlTool
{
public:
    explicit MemoryXmlTool(MemoryHost& host);

    bool CreateDOMObj() override;
    bool OpenXml(const CString& path) override;
    bool SelectNode(const CString& name) override;
    bool SetAttribute(const CString& name, const CString& value) override;
    bool SaveXml(const CString& path) override;

private:
    MemoryHost& m_host;
    xml::Document m_document;
    xml::Element m_selected;
};

} // namespace test
