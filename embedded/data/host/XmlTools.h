#pragma once

#include "host/Roles.h"

#include <QtCore/QByteArray>

namespace embedded {

/// XML tools over this system's own XML layer.
class XmlTools : public host::IXmlTools
{
public:
    std::unique_ptr<host::IXmlTool> CreateXmlTool() override;
    bool SetXmlVersion(const CString& version, const CString& file) override;
};

/// The bytes of a file with the version on it, as `XmlTools::SetXmlVersion` leaves them. Raises `xml::Error`.
QByteArray WithXmlVersion(const QByteArray& bytes, const CString& version);

} // namespace embedded
