#pragma once

#include "host/Roles.h"
#include "platform/Export.h"

#include <memory>

namespace NvWindowsTool {

/// One XML document of the host's tools. Each operation answers false when it failed, `CreateDOMObj` being
/// needed first.
class KTQDDE_EXPORT MSXMLUtilityPtr
{
public:
    MSXMLUtilityPtr();
    ~MSXMLUtilityPtr();
    MSXMLUtilityPtr(const MSXMLUtilityPtr&) = delete;
    MSXMLUtilityPtr& operator=(const MSXMLUtilityPtr&) = delete;

    bool CreateDOMObj();
    bool OpenXml(const CString& path);
    bool SelectNode(const CString& name);
    bool SetAttribute(const CString& name, const CString& value);
    bool SaveXml(const CString& path);

private:
    std::unique_ptr<host::IXmlTool> m_tool;
};

} // namespace NvWindowsTool
