#pragma once

#include "host/Records.h"
#include "platform/Export.h"

/// The host's project data, under the host's own names. Every operation asks the installed host (see
/// Installation.h) and raises `host::NoHostError` when there is none. Results and units are those of the role
/// interfaces in Roles.h.
namespace NvKtDataMng {

KTQDDE_EXPORT bool SpecNameToId(const CString& name, SNvKtSpecId& id);
/// `name` is the full name: specialty, backslash, big category.
KTQDDE_EXPORT bool BigCategoryNameToId(const CString& name, SNvKtBigCategoryId& id);
/// `name` is the full name: specialty, big category and small category joined by backslashes.
KTQDDE_EXPORT bool SmallCategoryNameToId(const CString& name, SNvKtSmallCategoryId& id);

/// Records a version in XML files. The spelling of the name is the host's.
namespace NvKtXmlVertion {
KTQDDE_EXPORT bool SetXmlVersion(const CString& version, const CString& file);
}

/// Specialties, categories, attributes and libraries. Holds no state; make one where it is needed.
class KTQDDE_EXPORT CAtt
{
public:
    bool GetAllSpecNames(CStringArray& names) const;
    bool GetAllBigCategoryIdsBySpec(const SNvKtSpecId& spec, CArray<SNvKtBigCategoryId>& ids) const;
    bool GetAllSmallCategoryIdsByBigCategory(const SNvKtBigCategoryId& big,
                                             CArray<SNvKtSmallCategoryId>& ids) const;
    bool GetBigCategoryName(const SNvKtBigCategoryId& id, CString& name) const;
    bool GetSmallCategoryName(const SNvKtSmallCategoryId& id, CString& name) const;
    SQdDeInfo::EQdDeMode GetQdDeMode() const;
    CString GetQdCode() const;
    CString GetDeCode() const;
    CString GetQdDeCode() const;
    CString GetQdFileName() const;
    CString GetDeFileName() const;
    CString GetQdDeFileName() const;
    CString GetQdLocal() const;
    CString GetDeLocal() const;
    CString GetQdDeLocal() const;
    CString GetDeYear() const;
    CString GetQdDeYear() const;
    bool GetDropList(const CString& code, CStringArray& values, CStringArray& extras) const;
};

/// The current project.
class KTQDDE_EXPORT CProj
{
public:
    CString GetPrjPath() const;
    CString GetCurrentSpec() const;
    SNvKtSpecId GetCurrentSpecId() const;
};

/// Where categories stand in the bill library.
class KTQDDE_EXPORT CSys
{
public:
    CString GetIndexPath(const CString& treePath) const;
};

/// The attributes of one small category.
class KTQDDE_EXPORT CSysSmallCategoryMng
{
public:
    explicit CSysSmallCategoryMng(SNvKtSmallCategoryId id);
    bool GetAttributeList(CStringArray& list) const;
    int GetAttType() const;

private:
    SNvKtSmallCategoryId m_id;
};

/// The bill items that the project has used before.
class KTQDDE_EXPORT CQdHistoryMng
{
public:
    bool GetQdInfoByQdNum(const CString& number, CArray<SQdInfo>& items) const;
};

} // namespace NvKtDataMng

namespace NvKtXmlVertion = NvKtDataMng::NvKtXmlVertion;
