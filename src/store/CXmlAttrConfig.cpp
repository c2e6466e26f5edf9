#include "store/CXmlAttrConfig.h"

#include "host/AttributeGroups.h"
#include "host/NvKtDataMng.h"
#include "host/NvKtProfile.h"
#include "platform/Numbers.h"
#include "tree/XmlVisitor.h"

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

CString RootName()
{
    return u"属性类型配置信息"_s;
}

CString InApplicationFolder(const CString& file)
{
    return NvKtProfile::GetAppProfile().GetAppFolder() + file;
}

/// The specialty's element, found by its attribute `name` and made when it is missing.
IXMLDOMElement SpecElement(const IXMLDOMElement& root, const CString& specName)
{
    for (IXMLDOMNode child = root.FirstChild(); child; child = child.NextSibling())
        if (XmlVisitor::getNodeAttribute(child.ToElement(), u"name"_s) == specName) return child.ToElement();
    IXMLDOMElement element = XmlVisitor::addChild(root, specName);
    SNvKtSpecId id;
    NvKtDataMng::SpecNameToId(specName, id);
    XmlVisitor::addatt(element, u"id"_s, id.strSpecId);
    XmlVisitor::addatt(element, u"name"_s, specName);
    return element;
}

/// A category's element, found by its tag and made when it is missing.
IXMLDOMElement CategoryElement(const IXMLDOMElement& parent, const CString& name, const CString& id)
{
    if (const IXMLDOMNode found = parent.SelectSingleNode(name)) return found.ToElement();
    IXMLDOMElement element = XmlVisitor::addChild(parent, name);
    XmlVisitor::addatt(element, u"id"_s, id);
    XmlVisitor::addatt(element, u"name"_s, name);
    return element;
}

/// What the "type" of AttributeInformation.xml says of an attribute; unknown types leave the record alone.
void ApplyType(int type, AttrConfig& config)
{
    switch (type) {
    case 1:
    case 2:
    case 10:
    case 11:
        config.compar = 0;
        config.specrelation = 1;
        break;
    case 3:
    case 8:
        config.compar = 1;
        config.specrelation = 1;
        break;
    case 9:
        config.compar = 1;
        config.specrelation = 0;
        break;
    default:
        break;
    }
}

int ReadNumber(const IXMLDOMElement& element, const CString& name)
{
    return platform::_wtoi(XmlVisitor::getNodeAttribute(element, name));
}

void WriteRecord(const IXMLDOMElement& element, const AttrConfig& config)
{
    XmlVisitor::addatt(element, u"name"_s, config.name);
    XmlVisitor::addatt(element, u"namecode"_s, config.namecode);
    XmlVisitor::addatt(element, u"vartype"_s, CString::number(config.vartype));
    XmlVisitor::addatt(element, u"compar"_s, CString::number(config.compar));
    XmlVisitor::addatt(element, u"specrelation"_s, CString::number(config.specrelation));
}

} // namespace

CXmlAttrConfig::CXmlAttrConfig(const CString& specName)
    : m_filePath(InApplicationFolder(u"\\AttrConfig.xml"_s)), m_specName(specName)
{
    Load();
}

CXmlAttrConfig::CXmlAttrConfig()
    : m_filePath(InApplicationFolder(u"\\AttrConfig.xml"_s)),
      m_parameterDocument(XmlVisitor::CreateXmlDocPtr())
{
    if (m_parameterDocument.IsNull()) return;
    m_parameterDocument.Load(InApplicationFolder(u"\\AttributeInformation.xml"_s));
    m_parameterRoot = m_parameterDocument.SelectSingleNode(u"属性参数信息"_s);
}

bool CXmlAttrConfig::Load()
{
    const IXMLDOMDocument document = XmlVisitor::CreateXmlDocPtr();
    if (document.IsNull()) return false;
    document.Load(m_filePath); // a missing or broken file counts as an empty one
    const IXMLDOMNode root = XmlVisitor::GetRootNode_C(document, RootName());
    if (root.IsNull()) return false;
    // Category names come from the tags, the specialty from its attribute.
    const IXMLDOMElement spec = SpecElement(root.ToElement(), m_specName);
    for (IXMLDOMNode big = spec.FirstChild(); big; big = big.NextSibling())
        for (IXMLDOMNode small = big.FirstChild(); small; small = small.NextSibling())
            LoadSmallCategory(small, m_specName + u'\\' + big.Name() + u'\\' + small.Name());
    return true;
}

void CXmlAttrConfig::LoadSmallCategory(const IXMLDOMNode& category, const CString& text)
{
    for (IXMLDOMNode node = category.FirstChild(); node; node = node.NextSibling()) {
        const IXMLDOMElement element = node.ToElement();
        AttrConfig config;
        config.name = XmlVisitor::getNodeAttribute(element, u"name"_s);
        config.namecode = XmlVisitor::getNodeAttribute(element, u"namecode"_s);
        config.vartype = ReadNumber(element, u"vartype"_s);
        config.compar = ReadNumber(element, u"compar"_s);
        config.specrelation = ReadNumber(element, u"specrelation"_s);
        m_records[text + config.name] = config;
    }
}

bool CXmlAttrConfig::GetAttConfig(const CString& key, AttrConfig& config) const
{
    const auto found = m_records.find(key);
    if (found == m_records.end()) return false;
    config = found->second;
    return true;
}

bool CXmlAttrConfig::SetAttConfig(const CString& key, const AttrConfig& config)
{
    const auto found = m_records.find(key);
    if (found == m_records.end()) return false;
    found->second.compar = config.compar;
    found->second.specrelation = config.specrelation;
    found->second.vartype = config.vartype;
    return true;
}

bool CXmlAttrConfig::Save()
{
    const IXMLDOMDocument document = XmlVisitor::CreateXmlDocPtr();
    if (document.IsNull()) return false;
    document.Load(m_filePath); // existing elements are kept
    const IXMLDOMNode root = XmlVisitor::GetRootNode_C(document, RootName());
    if (root.IsNull()) return false;
    CStringArray specNames;
    NvKtDataMng::CAtt().GetAllSpecNames(specNames);
    for (const CString& specName : specNames)
        if (!specName.contains(u"建筑"_s)) SaveSpec(root.ToElement(), specName);
    document.Save(m_filePath);
    return true;
}

void CXmlAttrConfig::SaveSpec(const IXMLDOMElement& root, const CString& specName)
{
    const NvKtDataMng::CAtt att;
    const IXMLDOMElement spec = SpecElement(root, specName);
    SNvKtSpecId specId;
    NvKtDataMng::SpecNameToId(specName, specId);
    CArray<SNvKtBigCategoryId> bigIds;
    att.GetAllBigCategoryIdsBySpec(specId, bigIds);
    for (const SNvKtBigCategoryId& bigId : bigIds) {
        CString bigName;
        att.GetBigCategoryName(bigId, bigName);
        const IXMLDOMElement big = CategoryElement(spec, bigName, bigId.strBigCategoryId);
        CArray<SNvKtSmallCategoryId> smallIds;
        att.GetAllSmallCategoryIdsByBigCategory(bigId, smallIds);
        for (const SNvKtSmallCategoryId& smallId : smallIds) {
            CString smallName;
            att.GetSmallCategoryName(smallId, smallName);
            const IXMLDOMElement small = CategoryElement(big, smallName, smallId.strSmallCategoryId);
            CStringArray attributes;
            NvKtDataMng::CSysSmallCategoryMng(smallId).GetAttributeList(attributes);
            SaveAttributes(small, attributes);
        }
    }
}

void CXmlAttrConfig::SaveAttributes(const IXMLDOMElement& category, const CStringArray& attributes)
{
    for (qsizetype group = 0; group < attributes.size(); group += host::AttributeGroupSize) {
        if (attributes.size() - group < host::AttributeGroupSize)
            throw std::invalid_argument("the host's attribute list ends within a group of four");
        AttrConfig config;
        config.name = attributes[group + host::AttributeNamePlace];
        config.namecode = attributes[group + host::AttributeCodePlace];
        IXMLDOMElement element = category.SelectSingleNode(config.namecode).ToElement();
        if (element.IsNull()) element = XmlVisitor::addChild(category, config.namecode);
        // Raises when the parameters were never opened, which is so in the bound form.
        const IXMLDOMElement parameter = m_parameterRoot.SelectSingleNode(config.namecode).ToElement();
        if (parameter.IsNull()) continue; // the element keeps the attributes that it has, or has none
        ApplyType(ReadNumber(parameter, u"type"_s), config);
        WriteRecord(element, config);
    }
}
