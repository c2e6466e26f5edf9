#pragma once

#include "host/Roles.h"

namespace embedded {

/// XML tools over this system's own XML layer.
class XmlTools : public host::IXmlTools
{
public:
    std::unique_ptr<host::IXmlTool> CreateXmlTool() override;
    bool SetXmlVersion(const CString& version, const CString& file) override;
};

} // namespace embedded
