#include "store/CXmlQdDeConfig.h"

#include "host/NvKtDataMng.h"
#include "host/NvKtProfile.h"
#include "platform/Files.h"
#include "platform/Messages.h"
#include "store/RuleFile.h"
#include "tree/XmlVisitor.h"

using namespace Qt::StringLiterals;

namespace {

/// The first child of `root` whose attribute `name` is that of the specialty, or null. The tag is not looked
/// at.
IXMLDOMNode ChildOfSpec(const IXMLDOMElement& root, const CString& specName)
{
    for (IXMLDOMNode child = root.FirstChild(); child; child = child.NextSibling())
        if (XmlVisitor::getNodeAttribute(child.ToElement(), u"name"_s) == specName) return child;
    return {};
}

} // namespace

IQdDeConfigData::~IQdDeConfigData() = default;

CXmlQdDeConfig::CXmlQdDeConfig(const CString& filePath, const CString& specName)
    : m_filePath(filePath), m_specName(specName)
{
    m_spec.SetSpecName(specName);
    const IXMLDOMDocument document = XmlVisitor::CreateXmlDocPtr();
    const bool loaded = document.Load(m_filePath);
    const IXMLDOMElement root = GetRootElement(document, store::RootName());
    if (root.IsNull()) return;
    const IXMLDOMElement element = FindSpecElement(root, m_specName);
    if (element.IsNull()) return;
    m_spec.ReadData(element);
    // Reading has completed the document. A file that exists but did not parse is somebody's work: it stays.
    if (!loaded && !platform::Files().Exists(m_filePath)) document.Save(m_filePath);
}

CXmlQdDeConfig::~CXmlQdDeConfig() = default;

CString CXmlQdDeConfig::GetFilePath()
{
    return m_filePath;
}

bool CXmlQdDeConfig::Save()
{
    const IXMLDOMDocument document = XmlVisitor::CreateXmlDocPtr();
    if (document.IsNull()) return false;
    document.Load(m_filePath); // a missing or broken file counts as an empty one
    const IXMLDOMElement root = GetRootElement(document, store::RootName());
    if (root.IsNull()) return false;
    const IXMLDOMElement element = RenewSpecElement(root, m_specName);
    if (element.IsNull()) return false;
    m_spec.WriteData(element);
    document.Save(m_filePath);
    NvKtXmlVertion::SetXmlVersion(store::VersionText(), m_filePath);
    return true;
}

bool CXmlQdDeConfig::SaveAs(const CString& path)
{
    // Exact, where `ReLoad` ignores case: another spelling of the bound path is copied onto itself.
    if (path != m_filePath && !platform::Files().Copy(m_filePath, path)) {
        platform::ShowWarning(u"文件另存为出错,请稍候在试"_s);
        return false;
    }
    struct BoundElsewhere
    {
        CString& bound;
        CString kept;
        ~BoundElsewhere() { bound = kept; }
    } const restore{m_filePath, m_filePath};
    m_filePath = path;
    IQdDeConfigData& self = *this;
    return self.Save();
}

bool CXmlQdDeConfig::ReLoad(const CString& path)
{
    IQdDeConfigData& self = *this;
    if (path.compare(m_filePath, Qt::CaseInsensitive) != 0) self.Save();
    if (!platform::Files().Exists(path)) {
        platform::ShowWarning(u"文件不存在，请重新选择调用文件"_s);
        return false;
    }
    const IXMLDOMDocument document = XmlVisitor::CreateXmlDocPtr();
    if (!document.Load(path)) return false;
    const IXMLDOMElement root = GetRootElement(document, store::RootName());
    if (root.IsNull()) return false;
    const IXMLDOMElement element = FindSpecElement(root, m_specName);
    if (element.IsNull()) return false;
    // The host may raise while the tree is read. The former one must outlast that: it is what the next save
    // writes.
    Spec loaded;
    loaded.SetSpecName(m_specName);
    loaded.ReadData(element);
    m_spec.Swap(loaded);
    m_filePath = path;
    return true;
}

bool CXmlQdDeConfig::NewFile(const CString& path)
{
    platform::Files().Copy(store::TemplatePath(), path); // a missing template shows in what is loaded
    IQdDeConfigData& self = *this;
    return self.ReLoad(path);
}

IXMLDOMElement CXmlQdDeConfig::GetRootElement(const IXMLDOMDocument& document, const CString& rootName)
{
    if (const IXMLDOMNode root = document.SelectSingleNode(rootName)) return root.ToElement();
    const IXMLDOMElement created = document.CreateElement(rootName);
    if (created.IsNull()) return {};
    created.SetAttribute(u"Version"_s, store::VersionTextOrDefault());
    try {
        // A document takes no second document element: this is how a file with another one is refused.
        return document.AppendChild(created).ToElement();
    } catch (...) {
        return {};
    }
}

IXMLDOMElement CXmlQdDeConfig::FindSpecElement(const IXMLDOMElement& root, const CString& specName) const
{
    if (const IXMLDOMNode child = ChildOfSpec(root, specName)) return child.ToElement();
    return AddSpecElement(root, specName);
}

/// Throws the specialty's element away whole and appends an empty one, which thereby stands last in the file.
/// Where a file holds the specialty twice, only the first goes, which is the one that was read: the other
/// survives like any neighbour. It then stands before the new one, so the next opening reads it; the edits
/// are still in the file behind it.
IXMLDOMElement CXmlQdDeConfig::RenewSpecElement(const IXMLDOMElement& root, const CString& specName) const
{
    if (const IXMLDOMNode child = ChildOfSpec(root, specName)) root.RemoveChild(child);
    return AddSpecElement(root, specName);
}

IXMLDOMElement CXmlQdDeConfig::AddSpecElement(const IXMLDOMElement& root, const CString& specName) const
{
    const IXMLDOMElement element = XmlVisitor::addChild(root, specName);
    SNvKtSpecId id;
    NvKtDataMng::SpecNameToId(specName, id);
    XmlVisitor::addatt(element, u"id"_s, id.strSpecId);
    XmlVisitor::addatt(element, u"name"_s, m_specName);
    return element;
}
