#pragma once

#include "dialogs/MyGridCtrl.h"
#include "dialogs/template/TemplateDialog.h"
#include "host/NvQdDeMng.h"
#include "host/Records.h"
#include "presenter/CQdDeConfigPresenter.h"

#include <array>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

class CExListBox;
class CTTComboBox;
class QSessionManager;
class QTabWidget;
class QTreeWidget;
class QTreeWidgetItem;

namespace widgets {
class TreeControl;
}

/// The dialog in which the user maintains a rule file: the tree of categories at the left, the rules of the
/// selected small category at the right, below them the value panel that builds a rule's conditions, and the
/// grid of the rule's bill and quota items.
///
/// The dialog holds no rule data. Every change goes through the presenter, and a list is rebuilt from the
/// presenter's answer after it. What the user typed into the grid reaches the tree at different moments:
/// columns 3 and 5 when a choice is made, column 4 when the calculator returns, column 2 and whatever was cut
/// or pasted only when the grid is flushed, that is when the tree selection changes and when the dialog
/// closes. Another rule, an added or removed condition and every other refill of the grid drop an edit that
/// was not flushed.
///
/// There is no way out that discards: the cancel button, Escape, the close box and a log-off all save. A save
/// that fails is reported and leaves the dialog open with everything in it; at a log-off it also stops the
/// session's end, and is reported where the session lets a program speak.
///
/// Beyond the buttons the keyboard offers: Delete in the grid deletes the selected items, Insert adds a rule,
/// Ctrl+Up and Ctrl+Down move the selected rule. None of them acts while a text is typed or a drop list has
/// the focus, and a key that is held down deletes and adds once.
///
/// Selecting a tree item or a rule row runs its handler inside the call that selects, so whatever a handler
/// shows must be complete before the selection is made. Selecting an entry of a list box, combo or tab from
/// code runs nothing.
///
/// The source is divided by concern: `CAutoConfigDlg.cpp` has construction and event table; the
/// others bear the name of theirs.
class CAutoConfigDlg : public dialogs::TemplateDialog
{
public:
    /// `configFile` is the path text of the rule file, empty for the project's current configuration. Raises
    /// `host::NoHostError` without a host that has windows.
    explicit CAutoConfigDlg(const CString& configFile, CWnd* parent = nullptr);
    ~CAutoConfigDlg() override;

protected:
    /// The same over a presenter that is there already.
    explicit CAutoConfigDlg(std::unique_ptr<CQdDeConfigPresenter> presenter, CWnd* parent = nullptr);

    /// Binds the controls to the members.
    void DoDataExchange(dialogs::DataExchange& exchange) override;
    /// Ends with the focus on the first button, so that no key acts on a rule before the user has chosen one.
    /// Raises what the host raises.
    void OnInitDialog() override;
    /// Saves, hides the pickers, then ends the dialog.
    void OnCancel() override;
    QWidget* CreateControl(const dialogs::ControlRow& row, QWidget* parent) override;
    /// Saves, hides the pickers, then goes on to the cancel step, which saves a second time.
    void OnClose() override;
    void OnLayout() override;

    /// Takes all rows of the grid over and writes the file. Raises what the writing raises.
    void FlushAndSave();

    /// Saves because the session ends. False when that failed; why is shown if `mayShow`, which is asked only
    /// then, says so.
    bool SaveForLogOff(const std::function<bool()>& mayShow);

    /// Shows the items of the selected rule that belong to the present libraries, none when no rule is
    /// selected.
    void FillGrid(const std::vector<ConfigNode*>& rules);

    /// What the dialog works on; owned by it.
    CQdDeConfigPresenter& Presenter() const noexcept { return *m_presenter; }

private:
    /// What a grid row reads back as: a bill row or a quota row.
    using GridRecord = std::variant<QdStruct, DeStruct>;
    /// A presenter operation that moves the rule at a path.
    using RuleMove = bool (CQdDeConfigPresenter::*)(const CPath&);

    // Frame
    void EnterEvents();
    void EnterShortcuts();
    void AddShortcut(const QKeySequence& keys, QWidget* place, Qt::ShortcutContext context, int command);
    void CenterOnMainFrame();
    void MoveToMiddleOf(const CWnd& mainFrame);
    void CreateGrid();
    void SetUpRuleList();
    /// Scales the columns of the rule list with the font, from the widths that the user gave them.
    void ScaleRuleColumns();
    void RefreshCaption();
    void OnLogOff(QSessionManager& session);
    void SaveAndHidePickers();
    void OnGridNotify(const GridNotification& notification);

    // Addressing. A path builder fills `path` from the selections and gives false when it cannot; the other
    // fields are left alone.

    /// The small category that is selected. False when nothing is selected or the item has children; a big
    /// category without children passes, one level off.
    bool GetCategoryPath(CPath& path) const;
    /// The rule that is selected; remembers its id in `m_currentRuleId`.
    bool GetRulePath(CPath& path);
    /// The condition that is selected. The condition's id is left alone when none is, so test first.
    bool GetConditionPath(CPath& path);
    /// The bill item of a grid row: of a quota row the one above it.
    bool GetBillPathOfRow(int row, CPath& path);
    /// The same for the one selected row; false when none or several are selected.
    bool GetBillPathOfFocus(CPath& path);
    /// Specialty, big and small category joined by backslashes; empty where `GetCategoryPath` fails.
    CString GetCategoryText() const;
    /// The names from the root to the selected item, a backslash behind each.
    CString GetCategoryTreePath() const;
    /// Where the selected item stands in the bill library, levels joined by full stops.
    CString GetPickerPosition() const;
    QTreeWidgetItem* SelectedCategory() const;
    QTreeWidgetItem* SelectedRule() const;
    /// Big and small category, rule, bill item, kind and id of what a grid row shows: equal for the same item
    /// only. The categories' ids are 0 where `GetCategoryPath` fails, the rule's where `GetRulePath` does,
    /// the bill item's where no bill row stands above.
    std::array<int, 6> AddressOfRow(int row);

    // Rule list and grid rows

    /// Shows `m_rules` and selects the first, which runs `OnRuleChanged` before this returns.
    void FillRuleList();
    /// Empties `m_rules` and the list.
    void ForgetRules();
    /// Selects the first row of that id; nothing happens when there is none.
    void SelectRuleById(int id);
    /// Enables what works on the conditions of a rule, and copying and deleting the rule.
    void EnableConditionControls(bool enable);
    /// Takes all grid rows over into the tree; the focus cell ends in the last row.
    void FlushGrid();
    /// Replaces the item of a grid row by what the row shows. The whole record is replaced: fields that the
    /// grid does not show become empty, and the item gets the code of the present library.
    void CommitGridRow(int row);
    GridRecord ReadGridRow(int row) const;

    // Tree
    void FillConfigTree();
    void FillBigCategory(const SNvKtBigCategoryId& id, QTreeWidgetItem& root);
    void OnCategoryChanging();
    void OnCategoryChanged();
    /// Sets up the grid for the selected category and asks for its rules; false when it has none. Where the
    /// host raises, no rules are shown any more.
    bool OpenCategory();
    void ResetGridForCategory();
    void SyncPickerPosition();
    void ToggleItemPicker();
    void ToggleBillPicker();
    void ToggleQuotaPicker();

    // Rules
    void OnRuleChanged();
    void OnAddRule();
    void OnCopyRule();
    void OnDeleteRule();
    void OnMoveRuleUp();
    void OnMoveRuleDown();
    void MoveRule(RuleMove step);
    /// Fills `m_rules` with the rules of the small category at a path; false when it is not there.
    bool AskForRules(const CPath& path);
    /// Asks for the rules of the small category anew and shows them; false when it is not there.
    bool RefillRules(const CPath& path);

    // Files
    void OnNewFile();
    void OnLoadFile();
    void OnSaveAs();
    void OnImportFromNetDisk();
    std::optional<CString> AskForFile(int mode, const CString& startPath);
    /// Runs a load. One that raises leaves everything as it is shown, edits of the grid included, unless the
    /// nodes in `m_rules` are gone by then: the rules are then shown anew, as they are in the tree.
    bool RunLoad(const std::function<bool()>& load);
    /// The same for a load after which another file is current, whose name goes into the caption.
    bool LoadAndName(const std::function<bool()>& load);
    /// Whether the store holds the very rules that are in `m_rules`.
    bool ShowsStoredRules() const;
    void ReloadRules();

    // Conditions
    void InitConditionPanel();
    void ShowConditionPage();
    void FillAttributeList();
    void AddHostAttributes(const CString& categoryText);
    void AddDerivedAttributes(const CString& categoryText);
    void AddAttribute(const CString& name, const CString& code);
    void OnAttributeChanged();
    void ChoosePageFor(const CString& attributeName);
    CStringArray ValuesOf(const CString& attributeCode);
    /// Makes the drop-down list wide enough for its longest entry; never narrower than it was.
    void WidenValueDropList(CTTComboBox& combo);
    void FillConditionList();
    void OnAddCondition();
    void OnRemoveCondition();
    /// Appends the eight texts of a condition; false, without a word, when the panel holds no usable one.
    bool BuildConditionArray(CStringArray& array) const;
    bool AppendValue(CStringArray& array) const;
    bool AppendRange(CStringArray& array) const;
    /// Finds the first line of the rule's conditions that contains the name of the selected attribute.
    bool FindChosenCondition(int& id) const;
    CString SelectedAttribute() const;

    // Bill and quota items
    void SelectGridRow(int row);
    void AppendBill(const QdNode& bill);
    void AppendQuotas(const std::vector<DeNode*>& quotas);
    /// Selects the last row with that number.
    void SelectItem(const CString& number);
    /// `ruleOfItem`, or where it is empty the formula of the category. Warns when the category has none.
    CString FormulaFor(const CString& ruleOfItem) const;
    /// Message of a picker. Gives -1 for a null record, otherwise 0.
    int OnQdPicked(const SPickedQd* picked);
    /// Asks for the number under which a picked bill item enters the rule; nothing when the user cancels or
    /// no rule is selected.
    std::optional<CString> AskForNumber(const CString& picked);
    /// Message of a picker. Gives -1 for a null record, otherwise 0.
    int OnDePicked(const SPickedDe* picked);
    void OnDeleteItems();
    void DeleteFromBills(const CPath& path, const std::vector<int>& rows);
    void DeleteFromRule(const CPath& path, const std::vector<int>& rows);
    void OnGridCellClick(const dialogs::Notice& notice);
    void OnGridCellChoice(const dialogs::Notice& notice);

    std::unique_ptr<CQdDeConfigPresenter> m_presenter;
    /// The rules of the small category that is shown. The nodes belong to the store.
    std::vector<ConfigNode*> m_rules;
    /// Where `m_rules` was last asked for.
    CPath m_shownCategory{};
    CStringArray m_attributeExtras;
    std::map<CString, CString> m_attributeCodes;
    // The controls belong to the dialog's window; null before the init step.
    QTabWidget* m_pages = nullptr;
    widgets::TreeControl* m_tree = nullptr;
    QTreeWidget* m_ruleList = nullptr;
    CExListBox* m_attributeList = nullptr;
    CExListBox* m_conditionList = nullptr;
    MyGridCtrl m_grid;
    CTTComboBox* m_equalOperator = nullptr;
    CTTComboBox* m_lowerOperator = nullptr;
    CTTComboBox* m_upperOperator = nullptr;
    CTTComboBox* m_value = nullptr;
    CTTComboBox* m_lowerBound = nullptr;
    CTTComboBox* m_upperBound = nullptr;
    int m_currentRuleId = 0;
    NvQdDeMng::CSelQdDeDlg m_billPicker;
    NvQdDeMng::CSelDeDlg m_quotaPicker;
    /// What the columns of the rule list are wider than at a small font.
    double m_ruleColumnScale = 1;
};
