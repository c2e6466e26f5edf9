#pragma once

#include "host/Installation.h"
#include "support/PrintText.h"

#include <map>
#include <set>
#include <utility>
#include <vector>

namespace test {

/// The operations of a host that answer with a bool.
enum class Operation {
    SpecNameToId,
    BigCategoryNameToId,
    SmallCategoryNameToId,
    GetAllSpecNames,
    GetAllBigCategoryIdsBySpec,
    GetAllSmallCategoryIdsByBigCategory,
    GetBigCategoryName,
    GetSmallCategoryName,
    GetAttributeList,
    GetDropList,
    GetQdInfo,
    IsInQdk,
    GetQdInfoByQdNum,
    GetCalItems,
    GetCalItemInfo,
    SetXmlVersion,
    CreateDOMObj,
    OpenXml,
    SelectNode,
    SetAttribute,
    SaveXml,
};

/// The answers of the host about its libraries.
struct LibraryTexts
{
    CString qdCode;
    CString deCode;
    CString qdDeCode;
    CString qdFileName;
    CString deFileName;
    CString qdDeFileName;
    CString qdLocal;
    CString deLocal;
    CString qdDeLocal;
    CString deYear;
    CString qdDeYear;
};

/// A host that lives in memory and holds what a test puts into it. Every role but the windows. Starts out
/// empty; see `FillStandardCatalogue`. What a test adds can be asked for at once.
class MemoryHost : public host::ICategories,
                   public host::IAttributes,
                   public host::ILibraries,
                   public host::IProject,
                   public host::INvKtAppProfile,
                   public host::ICalculationRules,
                   public host::IXmlTools
{
public:
    // What a test puts in. Ids are texts with a decimal number, unique within their level.

    void AddSpec(const CString& id, const CString& name);
    /// The specialty of that id must have been added.
    void AddBig(const CString& specId, const CString& id, const CString& name);
    /// The big category of that id must have been added.
    void AddSmall(const CString& bigId, const CString& id, const CString& name);
    /// Takes a small category out again.
    void RemoveSmall(const CString& id);
    /// Gives a category another name.
    void RenameSmall(const CString& id, const CString& name);
    void SetIndexPath(const CString& treePath, const CString& indexPath)
    {
        m_indexPaths[treePath] = indexPath;
    }

    /// Adds an attribute to the small category of that id. `extra` is what the dialogs hand back for its drop
    /// list.
    void AddAttribute(const CString& smallId, const CString& group, const CString& name, const CString& extra,
                      const CString& code);
    /// Replaces the flat list of a small category, even by one whose last group is not complete.
    void SetAttributeList(const CString& smallId, const CStringArray& list) { m_attributes[smallId] = list; }
    void SetAttType(const CString& smallId, int type) { m_attTypes[smallId] = type; }
    void SetDropList(const CString& code, const CStringArray& values) { m_dropLists[code] = values; }
    /// The `extras` of the last call of `GetDropList`.
    const CStringArray& LastExtras() const noexcept { return m_lastExtras; }
    void SetCellData(const CString& code, int type, const CStringArray& values)
    {
        m_cells[code] = {type, values};
    }

    LibraryTexts& Libraries() noexcept { return m_libraries; }
    void SetEnCodeRule(int length, int suffixLength) { m_enCodeRule = {length, suffixLength}; }
    /// Adds an item to the bill library, under its number.
    void AddBillItem(const SQdInfo& item) { m_billItems[item.strNumber] = item; }
    /// Adds an item to what the project's history holds for a base number.
    void AddHistory(const CString& baseNumber, const SQdInfo& item) { m_history[baseNumber].append(item); }
    /// Adds a calculation item, named by `info.strName`, to a small category's full name.
    void AddCalItem(const CString& categoryText, const RuleCodeStruct& info);

    void SetProjectPath(const CString& path) { m_projectPath = path; }
    /// The specialty must have been added before it is asked for.
    void SetCurrentSpec(const CString& name) { m_currentSpec = name; }
    void SetMode(SQdDeInfo::EQdDeMode mode) noexcept { m_mode = mode; }
    void SetAppFolder(const CString& folder) { m_appFolder = folder; }
    void SetVersion(const CString& version) { m_version = version; }
    /// Windows for the host; not owned. Null, as at the start, is a host without a screen.
    void SetWindows(host::IWindows* windows) noexcept { m_windows = windows; }

    /// Lets an operation answer false from now on, or work again.
    void Fail(Operation operation) { m_failing.insert(operation); }
    void Work(Operation operation) { m_failing.erase(operation); }
    /// How often an operation has been called.
    int Calls(Operation operation) const;
    /// Counts a call and tells whether it has to fail. For the XML tools.
    bool Fails(Operation operation);

    /// All roles, for `host::Install`.
    host::Roles Roles();

    // The roles.

    bool SpecNameToId(const CString& name, SNvKtSpecId& id) override;
    bool BigCategoryNameToId(const CString& fullName, SNvKtBigCategoryId& id) override;
    bool SmallCategoryNameToId(const CString& fullName, SNvKtSmallCategoryId& id) override;
    bool GetAllSpecNames(CStringArray& names) override;
    bool GetAllBigCategoryIdsBySpec(const SNvKtSpecId& spec, CArray<SNvKtBigCategoryId>& ids) override;
    bool GetAllSmallCategoryIdsByBigCategory(const SNvKtBigCategoryId& big,
                                             CArray<SNvKtSmallCategoryId>& ids) override;
    bool GetBigCategoryName(const SNvKtBigCategoryId& id, CString& name) override;
    bool GetSmallCategoryName(const SNvKtSmallCategoryId& id, CString& name) override;
    CString GetIndexPath(const CString& treePath) override;

    bool GetAttributeList(const SNvKtSmallCategoryId& id, CStringArray& list) override;
    int GetAttType(const SNvKtSmallCategoryId& id) override;
    bool GetDropList(const CString& code, CStringArray& values, CStringArray& extras) override;
    std::unique_ptr<host::CellData> CreateCellData(const CString& code) override;

    CString GetQdCode() override { return m_libraries.qdCode; }
    CString GetDeCode() override { return m_libraries.deCode; }
    CString GetQdDeCode() override { return m_libraries.qdDeCode; }
    CString GetQdFileName() override { return m_libraries.qdFileName; }
    CString GetDeFileName() override { return m_libraries.deFileName; }
    CString GetQdDeFileName() override { return m_libraries.qdDeFileName; }
    CString GetQdLocal() override { return m_libraries.qdLocal; }
    CString GetDeLocal() override { return m_libraries.deLocal; }
    CString GetQdDeLocal() override { return m_libraries.qdDeLocal; }
    CString GetDeYear() override { return m_libraries.deYear; }
    CString GetQdDeYear() override { return m_libraries.qdDeYear; }
    bool GetQdInfo(const CString& number, SQdInfo& info) override;
    bool IsInQdk(const CString& number) override;
    void GetEnCodeRule(int& length, int& suffixLength) override;
    bool GetQdInfoByQdNum(const CString& number, CArray<SQdInfo>& items) override;

    CString GetPrjPath() override { return m_projectPath; }
    CString GetCurrentSpec() override { return m_currentSpec; }
    SNvKtSpecId GetCurrentSpecId() override;
    SQdDeInfo::EQdDeMode GetQdDeMode() override { return m_mode; }

    CString GetAppFolder() override { return m_appFolder; }
    CNvKtVersion GetVersion() override { return CNvKtVersion(m_version); }

    bool GetCalItems(const CString& categoryText, CStringArray& items, CStringArray& other) override;
    bool GetCalItemInfo(const CString& item, RuleCodeStruct& info) override;

    std::unique_ptr<host::IXmlTool> CreateXmlTool() override;
    bool SetXmlVersion(const CString& version, const CString& file) override;

private:
    template <typename Id>
    struct Named
    {
        Id id;
        CString name;
    };

    struct Cell
    {
        int type = 0;
        CStringArray values;
    };

    std::vector<Named<SNvKtSpecId>> m_specs;
    std::vector<Named<SNvKtBigCategoryId>> m_bigs;
    std::vector<Named<SNvKtSmallCategoryId>> m_smalls;
    std::map<CString, CString> m_indexPaths;
    std::map<CString, CStringArray> m_attributes;
    std::map<CString, int> m_attTypes;
    std::map<CString, CStringArray> m_dropLists;
    std::map<CString, Cell> m_cells;
    CStringArray m_lastExtras;
    LibraryTexts m_libraries;
    std::pair<int, int> m_enCodeRule = {-1, -1};
    std::map<CString, SQdInfo> m_billItems;
    std::map<CString, CArray<SQdInfo>> m_history;
    std::map<CString, CStringArray> m_calItems;
    std::map<CString, RuleCodeStruct> m_calItemInfos;
    CString m_projectPath;
    CString m_currentSpec;
    SQdDeInfo::EQdDeMode m_mode = SQdDeInfo::BillMode;
    CString m_appFolder;
    CString m_version;
    host::IWindows* m_windows = nullptr;
    std::set<Operation> m_failing;
    std::map<Operation, int> m_calls;
};

} // namespace test
