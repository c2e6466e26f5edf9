#include "support/MemoryXmlTool.h"

#include "support/MemoryHost.h"

namespace test {

namespace {

/// Whether `action` came to its end without an error of the XML engine.
template <typename Action>
bool Succeeds(const Action& action)
{
    try {
        action();
        return true;
    } catch (const xml::Error&) {
        return false;
    }
}

} // namespace

MemoryXmlTool::MemoryXmlTool(MemoryHost& host) : m_host(host) {}

bool MemoryXmlTool::CreateDOMObj()
{
    if (m_host.Fails(Operation::CreateDOMObj)) return false;
    const xml::Document document = xml::Document::Create();
    if (!document) return false;
    m_document = document;
    m_selected = {};
    return true;
}

bool MemoryXmlTool::OpenXml(const CString& path)
{
    if (m_host.Fails(Operation::OpenXml) || !m_document) return false;
    const xml::Document document = xml::Document::Create();
    if (!document || !document.Load(path)) return false;
    m_document = document;
    m_selected = {};
    return true;
}

bool MemoryXmlTool::SelectNode(const CString& name)
{
    if (m_host.Fails(Operation::SelectNode) || !m_document) return false;
    const xml::Element element = m_document.SelectSingleNode(name).ToElement();
    if (!element) return false;
    m_selected = element;
    return true;
}

bool MemoryXmlTool::SetAttribute(const CString& name, const CString& value)
{
    if (m_host.Fails(Operation::SetAttribute) || !m_selected) return false;
    return Succeeds([&] { m_selected.SetAttribute(name, value); });
}

bool MemoryXmlTool::SaveXml(const CString& path)
{
    if (m_host.Fails(Operation::SaveXml) || !m_document || !m_document.FirstChild()) return false;
    return Succeeds([&] { m_document.Save(path); });
}

} // namespace test
