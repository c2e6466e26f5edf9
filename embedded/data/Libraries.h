#pragma once

#include "embedded/data/CatalogueData.h"
#include "embedded/data/ProjectDatabase.h"
#include "host/Roles.h"

namespace embedded {

/// The bill library and the two quota libraries of the catalogue, and the project's history of bill items.
/// `data` and `project` must outlive this.
class Libraries : public host::ILibraries
{
public:
    Libraries(const CatalogueData& data, ProjectDatabase& project);

    CString GetQdCode() override;
    CString GetDeCode() override;
    CString GetQdDeCode() override;
    CString GetQdFileName() override;
    CString GetDeFileName() override;
    CString GetQdDeFileName() override;
    CString GetQdLocal() override;
    CString GetDeLocal() override;
    CString GetQdDeLocal() override;
    CString GetDeYear() override;
    CString GetQdDeYear() override;
    bool GetQdInfo(const CString& number, SQdInfo& info) override;
    bool IsInQdk(const CString& number) override;
    void GetEnCodeRule(int& length, int& suffixLength) override;
    /// True with an empty list for a number without history; false when the history cannot be read.
    bool GetQdInfoByQdNum(const CString& number, CArray<SQdInfo>& items) override;

private:
    const CatalogueData& m_data;
    ProjectDatabase& m_project;
    QHash<CString, const SQdInfo*> m_bills;
};

} // namespace embedded
