#include "embedded/data/host/XmlTools.h"

#include "xml/Dom.h"
#include "xml/RootAttribute.h"

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

const CString VersionName = u"Version"_s;

class XmlTool : public host::IXmlTool
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

bool XmlTool::CreateDOMObj()
{
    const xml::Document created = xml::Document::Create();
    if (created.IsNull()) return false;
    m_document = created;
    m_selected = {};
    return true;
}

bool XmlTool::OpenXml(const CString& path)
{
    if (m_document.IsNull()) return false;
    // A refused load empties its document, so it gets one of its own: a failed open changes nothing here.
    const xml::Document opened = xml::Document::Create();
    if (opened.IsNull() || !opened.Load(path)) return false;
    m_document = opened;
    m_selected = {};
    return true;
}

bool XmlTool::SelectNode(const CString& name)
{
    if (m_document.IsNull()) return false;
    const xml::Element found = m_document.SelectSingleNode(name).ToElement();
    if (found.IsNull()) return false;
    m_selected = found;
    return true;
}

bool XmlTool::SetAttribute(const CString& name, const CString& value)
{
    try {
        m_selected.SetAttribute(name, value);
        return true;
    } catch (const xml::Error&) {
        return false;
    }
}

bool XmlTool::SaveXml(const CString& path)
{
    // A document without its element would be no XML file.
    if (m_document.IsNull() || m_document.FirstChild().IsNull()) return false;
    try {
        m_document.Save(path);
        return true;
    } catch (const xml::Error&) {
        return false;
    }
}

} // namespace

std::unique_ptr<host::IXmlTool> XmlTools::CreateXmlTool()
{
    return std::make_unique<XmlTool>();
}

bool XmlTools::SetXmlVersion(const CString& version, const CString& file)
{
    return xml::SetRootAttribute(file, VersionName, version);
}

QByteArray WithXmlVersion(const QByteArray& bytes, const CString& version)
{
    return xml::WithRootAttribute(bytes, VersionName, version);
}

} // namespace embedded
