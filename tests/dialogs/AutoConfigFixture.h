#pragma once

#include "dialogs/AutoConfigIds.h"
#include "dialogs/CAutoConfigDlg.h"

#include "dialogs/AutoConfigRecords.h"
#include "dialogs/DialogUser.h"
#include "support/HostGuard.h"
#include "support/WindowsDouble.h"

#include <QtWidgets/QTreeWidget>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace test::autoconfig {

using namespace Qt::StringLiterals;
using namespace dialogs::autoconfig;
using ::testing::ElementsAre;

/// The dialog with its presenter open to tests, which compare what is shown with what is stored, and with
/// what it keeps for the dialogs that derive from it.
class OpenAutoConfigDlg : public CAutoConfigDlg
{
public:
    using CAutoConfigDlg::CAutoConfigDlg;
    /// The dialog over a presenter of the test.
    explicit OpenAutoConfigDlg(std::unique_ptr<CQdDeConfigPresenter> presenter)
        : CAutoConfigDlg(std::move(presenter))
    {
    }
    using CAutoConfigDlg::FillGrid;
    using CAutoConfigDlg::Presenter;
    using CAutoConfigDlg::SaveForLogOff;
};

/// The main dialog over the in-memory host, with a user in front of it.
class AutoConfigTest : public ::testing::Test
{
protected:
    AutoConfigTest();

    // Before the dialog opens

    /// Changes the current rule file.
    void Prepare(const std::function<void(CQdDeConfigPresenter&)>& step);
    /// Adds a rule with conditions of the value page on 管径; gives its id.
    int PrepareRule(const CStringArray& values, const CPath& category = WaterPipes);
    /// Adds a bill item with quota items to a rule; gives its id.
    int PrepareBill(int ruleId, const CString& number, const CStringArray& quotas = {});
    /// Adds a quota item of quota mode to a rule.
    void PrepareQuota(int ruleId, const CString& number);
    /// Lets the attribute of 给水管 be tested for equality only.
    void MakeEqualityOnly(const CString& name, const CString& code);
    void SetMode(SQdDeInfo::EQdDeMode mode) { Host().SetMode(mode); }
    void Open(const CString& configFile = {});

    // What the user does

    void SelectCategory(const CString& name);
    void SelectRule(int row);
    void SelectAttribute(const CString& name);
    void SelectPage(int page);
    void TypeInto(ControlId combo, const CString& text);
    void Choose(ControlId combo, const CString& entry);
    void AddValue(const CString& attribute, const CString& value);
    void AddRange(const CString& attribute, const CString& lower, const CString& upper);
    void Press(ControlId button) { test::Click(*m_dialog, button); }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    void ClickCell(int row, int column, Qt::KeyboardModifiers modifiers = {});
    /// Opens the cell and types, without ending the edit.
    void EditCell(int row, int column, const CString& text);
    /// Chooses an entry of a cell's list.
    void ChooseInCell(int row, int column, int entry);
    void Close() { m_dialog->close(); }

    /// What the user does in the modal dialog that the next step brings up. A step that brings none up fails
    /// the test.
    void InNextDialog(std::function<void(dialogs::TemplateDialog&)> step);
    /// Picks a bill and takes the number that is proposed for it.
    int PickBill(const CString& number);
    /// Picks a quota in the picker of the mode.
    int PickQuota(const CString& number, const CString& rule = u"L"_s);
    /// Chooses a name in the file dialog that the button brings up.
    void NameFile(ControlId button, const CString& name);

    // What is to be seen

    /// Name of the selected tree item; empty for none.
    CString SelectedCategory() const;
    CStringArray RuleTexts() const { return RuleColumn(1); }
    CStringArray RuleNumbers() const { return RuleColumn(0); }
    std::vector<int> RuleIds() const;
    int SelectedRuleRow() const;
    CStringArray AttributeNames() const { return test::Lines(*m_dialog, Attributes); }
    CString SelectedAttribute() const;
    CStringArray ConditionTexts() const { return test::Lines(*m_dialog, Conditions); }
    CString TextOf(ControlId combo) const;
    CString Caption() const { return m_dialog->windowTitle(); }
    /// A column of the grid's data rows.
    CStringArray GridColumn(int column = 1) const;
    int SelectedGridRow() const { return Grid().GetSelectedRow(); }
    bool IsEnabled(ControlId id) const { return m_dialog->GetDlgItem(id)->isEnabled(); }
    bool IsVisible(ControlId id) const { return m_dialog->GetDlgItem(id)->isVisible(); }
    int Page() const;

    // What is stored

    /// The rules in the tree, edits that were not saved included.
    CStringArray Stored(const CPath& category = WaterPipes) const;
    /// The rules in a file of the configuration folder.
    CStringArray Saved(const CPath& category = WaterPipes, const CString& name = u"DefaultConfig"_s);
    ConfigNode& Rule(int id, const CPath& category = WaterPipes) const;
    CString FilePath(const CString& name) const;

    MemoryHost& Host() { return m_guard.Host(); }
    MessageRecorder& Messages() { return m_guard.Messages(); }
    MyGridCtrl& Grid() const { return m_dialog->Item<MyGridCtrl>(ControlId::Grid); }
    QTreeWidget& Tree() const { return m_dialog->Item<QTreeWidget>(CategoryTree); }
    QTreeWidget& Rules() const { return m_dialog->Item<QTreeWidget>(RuleRows); }
    QTreeWidgetItem* Category(const CString& name) const;

    HostGuard m_guard;
    WindowsDouble m_windows;
    std::unique_ptr<OpenAutoConfigDlg> m_dialog;

private:
    CStringArray RuleColumn(int column) const;
    QPoint CellPoint(int row, int column) const;
};

/// Bill mode and quota mode.
class AutoConfigInBothModes : public AutoConfigTest,
                              public ::testing::WithParamInterface<SQdDeInfo::EQdDeMode>
{
protected:
    AutoConfigInBothModes() { SetMode(GetParam()); }
    /// Adds an item of the mode to a rule.
    void PrepareItem(int ruleId, const CString& number);
};

} // namespace test::autoconfig
