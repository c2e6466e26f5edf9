#include "host/APCellData.h"
#include "host/Installation.h"
#include "host/NvKtDataMng.h"
#include "host/NvKtProfile.h"
#include "host/NvQdInfo.h"
#include "host/NvSysRuleData.h"
#include "host/NvWindowsTool.h"

namespace NvKtDataMng {

bool SpecNameToId(const CString& name, SNvKtSpecId& id)
{
    return host::Categories().SpecNameToId(name, id);
}

bool BigCategoryNameToId(const CString& name, SNvKtBigCategoryId& id)
{
    return host::Categories().BigCategoryNameToId(name, id);
}

bool SmallCategoryNameToId(const CString& name, SNvKtSmallCategoryId& id)
{
    return host::Categories().SmallCategoryNameToId(name, id);
}

bool NvKtXmlVertion::SetXmlVersion(const CString& version, const CString& file)
{
    return host::Xml().SetXmlVersion(version, file);
}

bool CAtt::GetAllSpecNames(CStringArray& names) const
{
    return host::Categories().GetAllSpecNames(names);
}

bool CAtt::GetAllBigCategoryIdsBySpec(const SNvKtSpecId& spec, CArray<SNvKtBigCategoryId>& ids) const
{
    return host::Categories().GetAllBigCategoryIdsBySpec(spec, ids);
}

bool CAtt::GetAllSmallCategoryIdsByBigCategory(const SNvKtBigCategoryId& big,
                                               CArray<SNvKtSmallCategoryId>& ids) const
{
    return host::Categories().GetAllSmallCategoryIdsByBigCategory(big, ids);
}

bool CAtt::GetBigCategoryName(const SNvKtBigCategoryId& id, CString& name) const
{
    return host::Categories().GetBigCategoryName(id, name);
}

bool CAtt::GetSmallCategoryName(const SNvKtSmallCategoryId& id, CString& name) const
{
    return host::Categories().GetSmallCategoryName(id, name);
}

SQdDeInfo::EQdDeMode CAtt::GetQdDeMode() const
{
    return host::Project().GetQdDeMode();
}
CString CAtt::GetQdCode() const
{
    return host::Libraries().GetQdCode();
}
CString CAtt::GetDeCode() const
{
    return host::Libraries().GetDeCode();
}
CString CAtt::GetQdDeCode() const
{
    return host::Libraries().GetQdDeCode();
}
CString CAtt::GetQdFileName() const
{
    return host::Libraries().GetQdFileName();
}
CString CAtt::GetDeFileName() const
{
    return host::Libraries().GetDeFileName();
}
CString CAtt::GetQdDeFileName() const
{
    return host::Libraries().GetQdDeFileName();
}
CString CAtt::GetQdLocal() const
{
    return host::Libraries().GetQdLocal();
}
CString CAtt::GetDeLocal() const
{
    return host::Libraries().GetDeLocal();
}
CString CAtt::GetQdDeLocal() const
{
    return host::Libraries().GetQdDeLocal();
}
CString CAtt::GetDeYear() const
{
    return host::Libraries().GetDeYear();
}
CString CAtt::GetQdDeYear() const
{
    return host::Libraries().GetQdDeYear();
}

bool CAtt::GetDropList(const CString& code, CStringArray& values, CStringArray& extras) const
{
    return host::Attributes().GetDropList(code, values, extras);
}

CString CProj::GetPrjPath() const
{
    return host::Project().GetPrjPath();
}
CString CProj::GetCurrentSpec() const
{
    return host::Project().GetCurrentSpec();
}
SNvKtSpecId CProj::GetCurrentSpecId() const
{
    return host::Project().GetCurrentSpecId();
}

CString CSys::GetIndexPath(const CString& treePath) const
{
    return host::Categories().GetIndexPath(treePath);
}

CSysSmallCategoryMng::CSysSmallCategoryMng(SNvKtSmallCategoryId id) : m_id(std::move(id)) {}

bool CSysSmallCategoryMng::GetAttributeList(CStringArray& list) const
{
    return host::Attributes().GetAttributeList(m_id, list);
}

int CSysSmallCategoryMng::GetAttType() const
{
    return host::Attributes().GetAttType(m_id);
}

bool CQdHistoryMng::GetQdInfoByQdNum(const CString& number, CArray<SQdInfo>& items) const
{
    return host::Libraries().GetQdInfoByQdNum(number, items);
}

} // namespace NvKtDataMng

INvKtAppProfile& NvKtProfile::GetAppProfile()
{
    return host::Profile();
}

namespace NvQdInfo {

bool IBillLib::GetQdInfo(const CString& number, SQdInfo& info)
{
    return host::Libraries().GetQdInfo(number, info);
}
bool IBillLib::IsInQdk(const CString& number)
{
    return host::Libraries().IsInQdk(number);
}

void IBillLib::GetEnCodeRule(int& length, int& suffixLength)
{
    host::Libraries().GetEnCodeRule(length, suffixLength);
}

} // namespace NvQdInfo

namespace NvSysRuleData {

bool CFaceSysRule::GetCalItems(const CString& categoryText, CStringArray& items, CStringArray& other)
{
    return host::Calculation().GetCalItems(categoryText, items, other);
}

bool CFaceSysRule::GetCalItemInfo(const CString& item, RuleCodeStruct& info)
{
    return host::Calculation().GetCalItemInfo(item, info);
}

} // namespace NvSysRuleData

namespace APCellData {

CellData* CellDataFactory::Create(const CString& code)
{
    return host::Attributes().CreateCellData(code).release();
}
void CellDataFactory::Release(CellData* cell)
{
    delete cell;
}

} // namespace APCellData

namespace NvWindowsTool {

MSXMLUtilityPtr::MSXMLUtilityPtr() : m_tool(host::Xml().CreateXmlTool()) {}

MSXMLUtilityPtr::~MSXMLUtilityPtr() = default;
bool MSXMLUtilityPtr::CreateDOMObj()
{
    return m_tool->CreateDOMObj();
}
bool MSXMLUtilityPtr::OpenXml(const CString& path)
{
    return m_tool->OpenXml(path);
}
bool MSXMLUtilityPtr::SelectNode(const CString& name)
{
    return m_tool->SelectNode(name);
}
bool MSXMLUtilityPtr::SetAttribute(const CString& name, const CString& value)
{
    return m_tool->SetAttribute(name, value);
}
bool MSXMLUtilityPtr::SaveXml(const CString& path)
{
    return m_tool->SaveXml(path);
}

} // namespace NvWindowsTool
