#include "dialogs/CAutoConfigDlg.h"

#include "widgets/TreeControl.h"

#include <QtCore/QList>
#include <QtCore/QVariant>

// The rule list and the commands on rules. None of them asks for confirmation, and none flushes the grid.

namespace {

/// The default rule of a small category.
constexpr int DefaultRuleId = 1;

/// A line of the rule list: position, text and, as its integer, the id. Thousands are made at once, so it
/// holds these as they are instead of the toolkit's lists of values by role.
class RuleRow : public QTreeWidgetItem
{
public:
    RuleRow(int position, const ConfigNode& rule)
        : m_position(position), m_id(rule.GetId()), m_text(rule.GetConditionString())
    {
    }

    QVariant data(int column, int role) const override
    {
        if (role == Qt::UserRole) return column == 0 ? QVariant(m_id) : QVariant();
        if (role != Qt::DisplayRole) return QTreeWidgetItem::data(column, role);
        return column == 0 ? CString::number(m_position) : m_text;
    }

private:
    int m_position;
    int m_id;
    CString m_text;
};

} // namespace

void CAutoConfigDlg::FillRuleList()
{
    m_ruleList->clear();
    QList<QTreeWidgetItem*> rows;
    rows.reserve(static_cast<qsizetype>(m_rules.size()));
    for (const ConfigNode* rule : m_rules)
        rows.append(new RuleRow(static_cast<int>(rows.size()) + 1, *rule));
    m_ruleList->addTopLevelItems(rows);
    if (!rows.isEmpty()) m_ruleList->setCurrentItem(rows.first());
}

void CAutoConfigDlg::ForgetRules()
{
    m_rules.clear();
    FillRuleList();
}

void CAutoConfigDlg::SelectRuleById(int id)
{
    for (int row = 0; row < m_ruleList->topLevelItemCount(); ++row) {
        QTreeWidgetItem* item = m_ruleList->topLevelItem(row);
        if (widgets::DataOf(item) != id) continue;
        m_ruleList->setCurrentItem(item);
        return;
    }
}

// Does not flush: an edit of the grid that was not committed is dropped by the refill.
void CAutoConfigDlg::OnRuleChanged()
{
    const QTreeWidgetItem* rule = SelectedRule();
    if (rule == nullptr) return;
    EnableConditionControls(widgets::DataOf(rule) != DefaultRuleId);
    FillConditionList();
    FillGrid(m_rules);
    int row = 1;
    while (row < m_grid.GetRowCount() && m_grid.KindOf(row) != MyGridCtrl::BillRow)
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
