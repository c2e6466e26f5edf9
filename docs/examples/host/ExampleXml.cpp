#include "ExampleXml.h"

bool ExampleXml::CreateDOMObj()
{
    m_document = xml::Document::Create();
    m_selected = {};
    return true;
}

bool ExampleXml::OpenXml(const CString& path)
{
    return !m_document.IsNull() && m_document.Load(path);
}

bool ExampleXml::SelectNode(const CString& name)
{
    if (m_document.IsNull()) return false;
    m_selected = m_document.SelectSingleNode(name).ToElement();
    return !m_selected.IsNull();
}

bool ExampleXml::SetAttribute(const CString& name, const CString& value)
try {
    m_selected.SetAttribute(name, value);
    return true;
} catch (const xml::Error&) {
    return false;
}

bool ExampleXml::SaveXml(const CString& path)
try {
    m_document.Save(path);
    return true;
} catch (const xml::Error&) {
    return false;
}
