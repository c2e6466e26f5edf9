#pragma once

#include "embedded/data/CatalogueData.h"
#include "embedded/data/ProjectDatabase.h"
#include "embedded/data/RuleNumbers.h"
#include "host/Roles.h"

namespace embedded {

/// The bill library and the two quota libraries of the catalogue, and the project's history of bill items:
/// those with which it started and those of its rule files.
/// `data` and `project` must outlive this.
class Libraries : public host::ILibraries
{
public:
    /// `ruleFolder` is the path text of the folder of the rule files.
    Libraries(const CatalogueData& data, ProjectDatabase& project, const CString& ruleFolder);

    CString GetQdCode() override { return m_data.billLibrary.code; }
    CString GetDeCode() override { return m_data.quotaLibrary.code; }
    CString GetQdDeCode() override { return m_data.quotaLibraryOfBills.code; }
    CString GetQdFileName() override { return m_data.billLibrary.fileName; }
    CString GetDeFileName() override { return m_data.quotaLibrary.fileName; }
    CString GetQdDeFileName() override { return m_data.quotaLibraryOfBills.fileName; }
    CString GetQdLocal() override { return m_data.billLibrary.local; }
    CString GetDeLocal() override { return m_data.quotaLibrary.local; }
    CString GetQdDeLocal() override { return m_data.quotaLibraryOfBills.local; }
    CString GetDeYear() override { return m_data.quotaLibrary.year; }
    CString GetQdDeYear() override { return m_data.quotaLibraryOfBills.year; }
    bool GetQdInfo(const CString& number, SQdInfo& info) override;
    bool IsInQdk(const CString& number) override;
    void GetEnCodeRule(int& length, int& suffixLength) override;
    /// In the order of their numbers, each once. True with an empty list for a number without history; false
    /// when the history cannot be read. A rule file that cannot be read is passed over.
    bool GetQdInfoByQdNum(const CString& number, CArray<SQdInfo>& items) override;

private:
    const CatalogueData& m_data;
    ProjectDatabase& m_project;
    RuleNumbers m_ruleNumbers;
    QHash<CString, const SQdInfo*> m_bills;
};

} // namespace embedded
