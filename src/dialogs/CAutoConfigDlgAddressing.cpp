#include "dialogs/CAutoConfigDlg.h"

#include "dialogs/secondary/CExListBox.h"
#include "widgets/ListControls.h"
#include "widgets/TreeControl.h"

#include <array>

// From selections to paths.

namespace {

/// Empty for no item.
CString TextOf(const QTreeWidgetItem* item)
{
    return item == nullptr ? CString() : item->text(0);
}
const QTreeWidgetItem* ParentOf(const QTreeWidgetItem* item)
{
    return item == nullptr ? nullptr : item->parent();
}

} // namespace

QTreeWidgetItem* CAutoConfigDlg::SelectedCategory() const
{
    QTreeWidgetItem* item = m_tree->GetSelectedItem();
    return item == nullptr || item->childCount() > 0 ? nullptr : item;
}

QTreeWidgetItem* CAutoConfigDlg::SelectedRule() const
{
    return widgets::SelectedItemOf(*m_ruleList);
}

bool CAutoConfigDlg::GetCategoryPath(CPath& path) const
{
    const QTreeWidgetItem* item = SelectedCategory();
    if (item == nullptr) return false;
    path.sMemberId = widgets::DataOf(item);
    path.lMemberId = widgets::DataOf(ParentOf(item));
    path.specId = widgets::DataOf(ParentOf(ParentOf(item)));
    return true;
}

bool CAutoConfigDlg::GetRulePath(CPath& path)
{
    if (!GetCategoryPath(path)) return false;
    const QTreeWidgetItem* rule = SelectedRule();
    if (rule == nullptr) return false;
    path.configId = widgets::DataOf(rule);
    m_currentRuleId = path.configId;
    return true;
}

bool CAutoConfigDlg::GetConditionPath(CPath& path)
{
    if (!GetRulePath(path)) return false;
    const int line = widgets::GetCurSel(*m_conditionList);
    if (line >= 0) path.conditionId = widgets::GetItemData(*m_conditionList, line);
    return true;
}

bool CAutoConfigDlg::GetBillPathOfRow(int row, CPath& path)
{
    if (!GetRulePath(path)) return false;
    const int billRow = m_grid.BillRowOf(row);
    if (billRow < 1) return false;
    path.qdId = m_grid.IdOf(billRow);
    return true;
}

bool CAutoConfigDlg::GetBillPathOfFocus(CPath& path)
{
    return GetBillPathOfRow(m_grid.GetSelectedRow(), path);
}

std::array<int, 6> CAutoConfigDlg::AddressOfRow(int row)
{
    CPath path{};
    GetRulePath(path);
    return {path.lMemberId,     path.sMemberId,  path.configId, m_grid.IdOf(m_grid.BillRowOf(row)),
            m_grid.KindOf(row), m_grid.IdOf(row)};
}

CString CAutoConfigDlg::GetCategoryText() const
{
    const QTreeWidgetItem* item = SelectedCategory();
    if (item == nullptr) return {};
    const QTreeWidgetItem* parent = ParentOf(item);
    return TextOf(ParentOf(parent)) + u'\\' + TextOf(parent) + u'\\' + TextOf(item);
}

CString CAutoConfigDlg::GetCategoryTreePath() const
{
    CString path;
    for (const QTreeWidgetItem* item = m_tree->GetSelectedItem(); item != nullptr; item = item->parent())
        path.prepend(item->text(0) + u'\\');
    return path;
}
