#pragma once

#include <host/Installation.h>

#include <functional>

/// A host of one specialty with one category and an empty library, in a folder that it is given. All that the
/// module asks of a host, in the least that works.
class SmallHost : public host::ICategories,
                  public host::IAttributes,
                  public host::ILibraries,
                  public host::IProject,
                  public host::INvKtAppProfile,
                  public host::ICalculationRules,
                  public host::IXmlTools,
                  public host::IWindows
{
public:
    /// `folder` must exist.
    explicit SmallHost(const CString& folder) : m_folder(folder) {}

    host::Roles Roles();

    /// Runs when a dialog is about to show itself, in its event loop.
    void AtTheDialog(std::function<void(CWnd&)> step) { m_atTheDialog = std::move(step); }

    bool SpecNameToId(const CString& name, SNvKtSpecId& id) override;
    bool BigCategoryNameToId(const CString& fullName, SNvKtBigCategoryId& id) override;
    bool SmallCategoryNameToId(const CString& fullName, SNvKtSmallCategoryId& id) override;
    bool GetAllSpecNames(CStringArray& names) override;
    bool GetAllBigCategoryIdsBySpec(const SNvKtSpecId&, CArray<SNvKtBigCategoryId>& ids) override;
    bool GetAllSmallCategoryIdsByBigCategory(const SNvKtBigCategoryId&,
                                             CArray<SNvKtSmallCategoryId>& ids) override;
    bool GetBigCategoryName(const SNvKtBigCategoryId&, CString& name) override;
    bool GetSmallCategoryName(const SNvKtSmallCategoryId&, CString& name) override;
    CString GetIndexPath(const CString&) override { return {}; }

    bool GetAttributeList(const SNvKtSmallCategoryId&, CStringArray& list) override;
    int GetAttType(const SNvKtSmallCategoryId&) override { return 0; }
    bool GetDropList(const CString&, CStringArray&, CStringArray&) override { return false; }
    std::unique_ptr<host::CellData> CreateCellData(const CString&) override { return nullptr; }

    CString GetQdCode() override { return {}; }
    CString GetDeCode() override { return {}; }
    CString GetQdDeCode() override { return {}; }
    CString GetQdFileName() override { return QStringLiteral("清单"); }
    CString GetDeFileName() override { return {}; }
    CString GetQdDeFileName() override { return QStringLiteral("定额"); }
    CString GetQdLocal() override { return {}; }
    CString GetDeLocal() override { return {}; }
    CString GetQdDeLocal() override { return {}; }
    CString GetDeYear() override { return {}; }
    CString GetQdDeYear() override { return {}; }
    bool GetQdInfo(const CString&, SQdInfo&) override { return false; }
    bool IsInQdk(const CString&) override { return false; }
    void GetEnCodeRule(int&, int&) override {}
    bool GetQdInfoByQdNum(const CString&, CArray<SQdInfo>&) override { return false; }

    CString GetPrjPath() override { return m_folder + QStringLiteral("\\工程.prj"); }
    CString GetCurrentSpec() override { return QStringLiteral("给排水"); }
    SNvKtSpecId GetCurrentSpecId() override { return {QStringLiteral("1")}; }
    SQdDeInfo::EQdDeMode GetQdDeMode() override { return SQdDeInfo::BillMode; }

    CString GetAppFolder() override { return m_folder; }
    CNvKtVersion GetVersion() override { return CNvKtVersion(QStringLiteral("1.2.3")); }

    bool GetCalItems(const CString&, CStringArray&, CStringArray&) override { return false; }
    bool GetCalItemInfo(const CString&, RuleCodeStruct&) override { return false; }

    std::unique_ptr<host::IXmlTool> CreateXmlTool() override;
    bool SetXmlVersion(const CString&, const CString&) override { return false; }

    std::unique_ptr<host::IBillPicker> MakeBillPicker() override;
    std::unique_ptr<host::IPickerWindow> MakeQuotaPicker() override;
    int ShowCalculatorDlg(const CString&, const CString&, CString&, CWnd*) override { return 2; }
    void ShowNetDisk(const CString&, bool) override {}
    CWnd* MainFrame() override;

private:
    CString m_folder;
    std::function<void(CWnd&)> m_atTheDialog;
};
