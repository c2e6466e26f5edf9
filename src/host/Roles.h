#pragma once

#include "host/Records.h"
#include "platform/Export.h"
#include "platform/Window.h"

#include <memory>

/// What a host supplies. The module itself calls these roles only through the host's own names (NvKtDataMng.h
/// and its neighbours); whoever writes a host implements the interfaces below and installs them with
/// `host::Install`. All calls come on the thread of the dialogs. A bool result of false means that the
/// host does not know or cannot tell; the outputs are then left as they were. Whatever a role raises
/// travels up to the caller of the module.
namespace host {

/// Specialties, big and small categories. A full name joins names by backslashes: specialty, big category,
/// small category. Every list is in the host's own order, which becomes the order of the tree.
class KTQDDE_EXPORT ICategories
{
public:
    virtual ~ICategories();
    virtual bool SpecNameToId(const CString& name, SNvKtSpecId& id) = 0;
    virtual bool BigCategoryNameToId(const CString& fullName, SNvKtBigCategoryId& id) = 0;
    virtual bool SmallCategoryNameToId(const CString& fullName, SNvKtSmallCategoryId& id) = 0;
    /// The lists replace what the argument held.
    virtual bool GetAllSpecNames(CStringArray& names) = 0;
    virtual bool GetAllBigCategoryIdsBySpec(const SNvKtSpecId& spec, CArray<SNvKtBigCategoryId>& ids) = 0;
    virtual bool GetAllSmallCategoryIdsByBigCategory(const SNvKtBigCategoryId& big,
                                                     CArray<SNvKtSmallCategoryId>& ids) = 0;
    /// Short names, without the levels above.
    virtual bool GetBigCategoryName(const SNvKtBigCategoryId& id, CString& name) = 0;
    virtual bool GetSmallCategoryName(const SNvKtSmallCategoryId& id, CString& name) = 0;
    /// Where a category stands in the bill library: an index path whose levels are joined by backslashes.
    /// `treePath` is the full name with a trailing backslash. Empty when there is none.
    virtual CString GetIndexPath(const CString& treePath) = 0;
};

/// Where the values of one attribute come from.
class KTQDDE_EXPORT CellData
{
public:
    virtual ~CellData();
    /// The attribute's own list of values.
    virtual CStringArray GetValues() const = 0;
    /// The kind of source; 9 means that the values come from `GetDropList` instead.
    virtual int GetType() const = 0;
};

/// Attributes of small categories and their values.
class KTQDDE_EXPORT IAttributes
{
public:
    virtual ~IAttributes();
    /// Replaces `list` by a flat list, four texts per attribute: group, display name, an extra that is handed
    /// back to `GetDropList`, attribute code.
    virtual bool GetAttributeList(const SNvKtSmallCategoryId& id, CStringArray& list) = 0;
    /// 0 gives the grid five columns, anything else six.
    virtual int GetAttType(const SNvKtSmallCategoryId& id) = 0;
    /// Replaces `values` by the value list of an attribute. `extras` is passed as the caller holds it.
    virtual bool GetDropList(const CString& code, CStringArray& values, CStringArray& extras) = 0;
    /// The value source of an attribute code; null when the code is unknown.
    virtual std::unique_ptr<CellData> CreateCellData(const CString& code) = 0;
};

/// Bill and quota libraries of the current project.
class KTQDDE_EXPORT ILibraries
{
public:
    virtual ~ILibraries();
    /// Codes of the bill library, of the quota library in quota mode, and of the quota library in bill mode.
    virtual CString GetQdCode() = 0;
    virtual CString GetDeCode() = 0;
    virtual CString GetQdDeCode() = 0;
    /// Library file names without extension, in the same three roles.
    virtual CString GetQdFileName() = 0;
    virtual CString GetDeFileName() = 0;
    virtual CString GetQdDeFileName() = 0;
    /// Region and year of the libraries, for the head of a rule file.
    virtual CString GetQdLocal() = 0;
    virtual CString GetDeLocal() = 0;
    virtual CString GetQdDeLocal() = 0;
    virtual CString GetDeYear() = 0;
    virtual CString GetQdDeYear() = 0;
    /// True when the bill library has the number, with `info` filled.
    virtual bool GetQdInfo(const CString& number, SQdInfo& info) = 0;
    /// True when the bill library holds the number.
    virtual bool IsInQdk(const CString& number) = 0;
    /// The coding rule of the bill library: characters of a base number, characters of its suffix. -1 in
    /// either means no rule.
    virtual void GetEnCodeRule(int& length, int& suffixLength) = 0;
    /// Replaces `items` by what the project's history holds for a base number.
    virtual bool GetQdInfoByQdNum(const CString& number, CArray<SQdInfo>& items) = 0;
};

/// The current project.
class KTQDDE_EXPORT IProject
{
public:
    virtual ~IProject();
    /// Path text of the project file. Its folder holds SysRegedit.ini.
    virtual CString GetPrjPath() = 0;
    virtual CString GetCurrentSpec() = 0;
    virtual SNvKtSpecId GetCurrentSpecId() = 0;
    virtual SQdDeInfo::EQdDeMode GetQdDeMode() = 0;
};

/// The program that hosts the module.
class KTQDDE_EXPORT INvKtAppProfile
{
public:
    virtual ~INvKtAppProfile();
    /// The application folder: a path text without trailing backslash. Rule files, template and attribute
    /// files lie below it.
    virtual CString GetAppFolder() = 0;
    virtual CNvKtVersion GetVersion() = 0;
};

/// Calculation items of small categories.
class KTQDDE_EXPORT ICalculationRules
{
public:
    virtual ~ICalculationRules();
    /// Replaces both lists. `categoryText` is the full name of a small category.
    virtual bool GetCalItems(const CString& categoryText, CStringArray& items, CStringArray& other) = 0;
    virtual bool GetCalItemInfo(const CString& item, RuleCodeStruct& info) = 0;
};

/// One XML document of the host's XML tools. Every operation answers false when it failed, and then has done
/// nothing.
class KTQDDE_EXPORT IXmlTool
{
public:
    virtual ~IXmlTool();
    virtual bool CreateDOMObj() = 0;
    virtual bool OpenXml(const CString& path) = 0;
    /// Selects the document element of that name for the attribute calls.
    virtual bool SelectNode(const CString& name) = 0;
    virtual bool SetAttribute(const CString& name, const CString& value) = 0;
    virtual bool SaveXml(const CString& path) = 0;
};

/// The host's tools for XML files.
class KTQDDE_EXPORT IXmlTools
{
public:
    virtual ~IXmlTools();
    /// Never null.
    virtual std::unique_ptr<IXmlTool> CreateXmlTool() = 0;
    /// Records `version` as attribute "Version" of the document element of `file`. Every other byte stays,
    /// and the file is not written when it already says so: this runs after every save.
    virtual bool SetXmlVersion(const CString& version, const CString& file) = 0;
};

/// A modeless picker window of the host. It sends a picked item to its parent as a `host::UserMessage`,
/// synchronously on the thread of the dialogs; the record lives until the message has been handled.
class KTQDDE_EXPORT IPickerWindow
{
public:
    virtual ~IPickerWindow();
    /// Makes the window, hidden. `parent` receives the messages and outlives the window.
    virtual bool Create(CWnd* parent) = 0;
    virtual bool IsVisible() const = 0;
    virtual void Show(bool visible) = 0;
    virtual void EnableContent(bool enable) = 0;
    /// Places the window at the right of another.
    virtual void MoveWndToRight(CWnd* wnd) = 0;
    /// Loads the window's lists.
    virtual void InitData() = 0;
};

/// The bill and quota picker of bill mode; sends 0x450 and 0x446.
class KTQDDE_EXPORT IBillPicker : public IPickerWindow
{
public:
    ~IBillPicker() override;
    /// Whether the picker asks for a bill number itself.
    virtual void SetShowGetQdNumDlg(bool show) = 0;
    /// Points the picker at an index position: levels joined by full stops.
    virtual void SetTreePosition(const CString& position) = 0;
};

/// The windows of a host. A host without a screen leaves this role out; calling it then raises `NoHostError`.
class KTQDDE_EXPORT IWindows
{
public:
    virtual ~IWindows();
    /// Never null. The window itself is made by `Create`.
    virtual std::unique_ptr<IBillPicker> MakeBillPicker() = 0;
    /// The picker of quota mode; sends 0x446 only. Never null.
    virtual std::unique_ptr<IPickerWindow> MakeQuotaPicker() = 0;
    /// Runs the modal calculator on `text`. Gives 1 on accept, with `result` filled.
    virtual int ShowCalculatorDlg(const CString& categoryText, const CString& text, CString& result,
                                  CWnd* parent) = 0;
    /// Runs the cloud-disk dialog on the folder of that name to its end.
    virtual void ShowNetDisk(const CString& name, bool flag) = 0;
    /// The host's main frame, on which dialogs are centred; null when there is none.
    virtual CWnd* MainFrame() = 0;
};

} // namespace host
