#include "dialogs/CAutoConfigDlg.h"

#include "dialogs/TreeControl.h"

// The rule list and the commands on rules. None of them asks for confirmation, and none flushes the grid.

namespace {

/// The default rule of a small category.
constexpr int DefaultRuleId = 1;

} // namespace

// Does not flush: an edit of the grid that was not committed is dropped by the refill.
void CAutoConfigDlg::OnRuleChanged()
{
    const QTreeWidgetItem* rule = SelectedRule();
    if (rule == nullptr) return;
    EnableConditionControls(rule->data(0, Qt::UserRole).toInt() != DefaultRuleId);
    FillConditionList();
    FillGrid(m_rules);
    int row = 1;
    while (row < m_grid.GetRowCount() && m_grid.GetItemData(row, 1) != 0)
        ++row;
    if (row < m_grid.GetRowCount()) SelectGridRow(row);
    // Last, so it enables the tab even on the default rule, unless the attribute is for equality only.
    OnAttributeChanged();
}

bool CAutoConfigDlg::AskForRules(const CPath& path)
{
    m_shownCategory = path;
    m_rules.clear();
    return m_presenter->GetConfig(path, m_rules);
}

bool CAutoConfigDlg::RefillRules(const CPath& path)
{
    const bool found = AskForRules(path);
    FillRuleList();
    return found;
}

void CAutoConfigDlg::OnAddRule()
{
    CPath path{};
    int newId = -1;
    if (!GetCategoryPath(path) || !m_presenter->AddConfig(path, newId)) return;
    if (!RefillRules(path)) return;
    SelectRuleById(newId);
    OnAttributeChanged();
}

void CAutoConfigDlg::OnCopyRule()
{
    CPath path{};
    int newId = -1;
    if (!GetRulePath(path) || !m_presenter->AddConfigByCopy(path, newId)) return;
    RefillRules(path);
    SelectRuleById(newId);
    OnAttributeChanged();
}

void CAutoConfigDlg::OnDeleteRule()
{
    CPath path{};
    if (!GetRulePath(path)) return;
    m_presenter->DelConfig(path);
    RefillRules(path);
}

void CAutoConfigDlg::OnMoveRuleUp()
{
    MoveRule(&CQdDeConfigPresenter::MoveUpConfig);
}

// On a small category with one rule the store raises its index error, and nothing changes.
void CAutoConfigDlg::OnMoveRuleDown()
{
    MoveRule(&CQdDeConfigPresenter::MoveDownConfig);
}

void CAutoConfigDlg::MoveRule(RuleMove step)
{
    CPath path{};
    if (!GetRulePath(path) || !(m_presenter.get()->*step)(path)) return;
    if (!RefillRules(path)) return;
    SelectRuleById(m_currentRuleId);
    OnAttributeChanged();
}
