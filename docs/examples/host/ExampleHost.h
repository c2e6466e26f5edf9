#pragma once

#include <host/Installation.h>

/// A host in the least that is useful: one specialty with two categories, two attributes, two bill items and
/// two quota items, and a project that is a folder. Every answer is a constant; a host of yours asks its own
/// data.
class ExampleHost : public host::ICategories,
                    public host::IAttributes,
                    public host::ILibraries,
                    public host::IProject,
                    public host::INvKtAppProfile,
                    public host::ICalculationRules,
                    public host::IXmlTools,
                    public host::IWindows
{
public:
    /// Works in the folder of that path text, which must exist, and puts there what the module wants to find.
    /// Raises `platform::FileError` when that fails.
    explicit ExampleHost(const CString& folder);

    /// The roles, for `host::Install`. This object plays all of them and must outlive the installation.
    host::Roles Roles();

    // host::ICategories
    bool SpecNameToId(const CString& name, SNvKtSpecId& id) override;
    bool BigCategoryNameToId(const CString& fullName, SNvKtBigCategoryId& id) override;
    bool SmallCategoryNameToId(const CString& fullName, SNvKtSmallCategoryId& id) override;
    bool GetAllSpecNames(CStringArray& names) override;
    bool GetAllBigCategoryIdsBySpec(const SNvKtSpecId& spec, CArray<SNvKtBigCategoryId>& ids) override;
    bool GetAllSmallCategoryIdsByBigCategory(const SNvKtBigCategoryId& big,
                                             CArray<SNvKtSmallCategoryId>& ids) override;
    bool GetBigCategoryName(const SNvKtBigCategoryId& id, CString& name) override;
    bool GetSmallCategoryName(const SNvKtSmallCategoryId& id, CString& name) override;
    CString GetIndexPath(const CString&) override { return {}; }

    // host::IAttributes: the values come from the cell data, so that there are no drop lists
    bool GetAttributeList(const SNvKtSmallCategoryId& id, CStringArray& list) override;
    int GetAttType(const SNvKtSmallCategoryId&) override { return 0; }
    bool GetDropList(const CString&, CStringArray&, CStringArray&) override { return false; }
    std::unique_ptr<host::CellData> CreateCellData(const CString& code) override;

    // host::ILibraries
    CString GetQdCode() override;
    CString GetDeCode() override { return GetQdDeCode(); }
    CString GetQdDeCode() override;
    CString GetQdFileName() override;
    CString GetDeFileName() override { return GetQdDeFileName(); }
    CString GetQdDeFileName() override;
    CString GetQdLocal() override { return {}; }
    CString GetDeLocal() override { return {}; }
    CString GetQdDeLocal() override { return {}; }
    CString GetDeYear() override { return {}; }
    CString GetQdDeYear() override { return {}; }
    bool GetQdInfo(const CString& number, SQdInfo& info) override;
    bool IsInQdk(const CString& number) override;
    void GetEnCodeRule(int& length, int& suffixLength) override;
    bool GetQdInfoByQdNum(const CString&, CArray<SQdInfo>&) override { return false; }

    // host::IProject
    CString GetPrjPath() override;
    CString GetCurrentSpec() override;
    SNvKtSpecId GetCurrentSpecId() override;
    SQdDeInfo::EQdDeMode GetQdDeMode() override { return SQdDeInfo::BillMode; }

    // host::INvKtAppProfile
    CString GetAppFolder() override { return m_folder; }
    CNvKtVersion GetVersion() override;

    // host::ICalculationRules: every category is taken off by its length
    bool GetCalItems(const CString& categoryText, CStringArray& items, CStringArray& other) override;
    bool GetCalItemInfo(const CString& item, RuleCodeStruct& info) override;

    // host::IXmlTools
    std::unique_ptr<host::IXmlTool> CreateXmlTool() override;
    bool SetXmlVersion(const CString& version, const CString& file) override;

    // host::IWindows: two pickers, but neither calculator nor cloud disk nor main frame
    std::unique_ptr<host::IBillPicker> MakeBillPicker() override;
    std::unique_ptr<host::IPickerWindow> MakeQuotaPicker() override;
    int ShowCalculatorDlg(const CString&, const CString&, CString&, CWnd*) override { return 0; }
    void ShowNetDisk(const CString&, bool) override {}
    CWnd* MainFrame() override { return nullptr; }

private:
    CString m_folder;
};
