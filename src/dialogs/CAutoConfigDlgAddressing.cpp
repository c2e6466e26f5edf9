#include "dialogs/CAutoConfigDlg.h"

#include "dialogs/AutoConfigIds.h"
#include "dialogs/ListControls.h"
#include "dialogs/ProjectMode.h"
#include "dialogs/TreeControl.h"
#include "dialogs/secondary/CExListBox.h"
#include "host/NvKtDataMng.h"
#include "platform/Numbers.h"

#include <QtCore/QList>
#include <QtCore/QVariant>
#include <QtWidgets/QTreeWidget>

#include <algorithm>
#include <array>
#include <cstdint>
#include <variant>
#include <vector>

// From selections to paths, the rule list, and from grid rows into the tree.

using namespace Qt::StringLiterals;
using namespace dialogs::autoconfig;

namespace {

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

/// Integer and text of a tree item; 0 and empty for no item.
int DataOf(const QTreeWidgetItem* item)
{
    return item == nullptr ? 0 : item->data(0, Qt::UserRole).toInt();
}
CString TextOf(const QTreeWidgetItem* item)
{
    return item == nullptr ? CString() : item->text(0);
}
const QTreeWidgetItem* ParentOf(const QTreeWidgetItem* item)
{
    return item == nullptr ? nullptr : item->parent();
}

/// The leading number of a unit such as "10m", at least 1.
CString UnitCodeOf(const CString& unit)
{
    return CString::number(std::max(platform::_wtol(unit.trimmed()), 1));
}

} // namespace

QTreeWidgetItem* CAutoConfigDlg::SelectedCategory() const
{
    QTreeWidgetItem* item = m_tree->GetSelectedItem();
    return item == nullptr || item->childCount() > 0 ? nullptr : item;
}

QTreeWidgetItem* CAutoConfigDlg::SelectedRule() const
{
    const QList<QTreeWidgetItem*> selected = m_ruleList->selectedItems();
    return selected.isEmpty() ? nullptr : selected.first();
}

bool CAutoConfigDlg::GetCategoryPath(CPath& path) const
{
    const QTreeWidgetItem* item = SelectedCategory();
    if (item == nullptr) return false;
    path.sMemberId = DataOf(item);
    path.lMemberId = DataOf(ParentOf(item));
    path.specId = DataOf(ParentOf(ParentOf(item)));
    return true;
}

bool CAutoConfigDlg::GetRulePath(CPath& path)
{
    if (!GetCategoryPath(path)) return false;
    const QTreeWidgetItem* rule = SelectedRule();
    if (rule == nullptr) return false;
    path.configId = DataOf(rule);
    m_currentRuleId = path.configId;
    return true;
}

bool CAutoConfigDlg::GetConditionPath(CPath& path)
{
    if (!GetRulePath(path)) return false;
    const int line = dialogs::GetCurSel(*m_conditionList);
    if (line >= 0) path.conditionId = m_conditionList->item(line)->data(Qt::UserRole).toInt();
    return true;
}

int CAutoConfigDlg::BillRowOf(int row) const
{
    while (row >= 1 && m_grid.GetItemData(row, 1) != 0)
        --row;
    return std::max(row, 0);
}

bool CAutoConfigDlg::GetBillPathOfRow(int row, CPath& path)
{
    if (!GetRulePath(path)) return false;
    const int billRow = BillRowOf(row);
    if (billRow < 1) return false;
    path.qdId = static_cast<int>(m_grid.GetItemData(billRow, 0));
    return true;
}

bool CAutoConfigDlg::GetBillPathOfFocus(CPath& path)
{
    return GetBillPathOfRow(m_grid.GetSelectedRow(), path);
}

std::array<std::intptr_t, 6> CAutoConfigDlg::AddressOfRow(int row)
{
    CPath path{};
    GetRulePath(path);
    return {path.lMemberId,
            path.sMemberId,
            path.configId,
            m_grid.GetItemData(BillRowOf(row), 0),
            m_grid.GetItemData(row, 1),
            m_grid.GetItemData(row, 0)};
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
        if (DataOf(item) != id) continue;
        m_ruleList->setCurrentItem(item);
        return;
    }
}

void CAutoConfigDlg::EnableConditionControls(bool enable)
{
    for (const int id :
         {int(Attributes), int(Conditions), int(PageTab), int(LowerOperator), int(UpperOperator),
          int(LowerBound), int(UpperBound), int(EqualOperator), int(ValueCombo), int(AddConditionButton),
          int(RemoveConditionButton), int(CopyRuleButton), int(DeleteRuleButton)})
        GetDlgItem(id)->setEnabled(enable);
}

void CAutoConfigDlg::FlushGrid()
{
    m_grid.Refresh();
    if (m_grid.GetRowCount() < 2) return;
    for (int row = 1; row < m_grid.GetRowCount(); ++row) {
        m_grid.SetFocusCell(row, 1); // ends an open edit, so that its text is taken over, too
        CommitGridRow(row);
    }
}

void CAutoConfigDlg::CommitGridRow(int row)
{
    const bool billMode = dialogs::IsBillMode();
    CPath path{};
    if (!(billMode ? GetBillPathOfRow(row, path) : GetRulePath(path))) return;
    path.deId = static_cast<int>(m_grid.GetItemData(row, 0));
    const GridRecord record = ReadGridRow(row);
    const auto* quota = std::get_if<DeStruct>(&record);
    if (billMode && quota != nullptr)
        m_presenter->ResetDeToQd(path, *quota);
    else if (billMode)
        m_presenter->ResetQd(path, std::get<QdStruct>(record));
    else if (quota != nullptr)
        m_presenter->ResetDeToConfig(path, *quota);
}

CAutoConfigDlg::GridRecord CAutoConfigDlg::ReadGridRow(int row) const
{
    const auto fill = [this, row](auto record, CString& number) {
        number = m_grid.GetItemText(row, 1);
        record.strName = m_grid.GetItemText(row, 2);
        record.strUnit = m_grid.GetItemText(row, 3);
        record.strUnitCode = UnitCodeOf(record.strUnit);
        record.strFormula = m_grid.GetItemText(row, 4);
        if (m_grid.GetColumnCount() > 5) record.strAnnex = m_grid.GetItemText(row, 5);
        return record;
    };
    CString number;
    if (m_grid.GetItemData(row, 1) == 0) {
        auto bill = fill(QdStruct(), number);
        bill.strQdId = number;
        bill.strQdCode = NvKtDataMng::CAtt().GetQdCode();
        return bill;
    }
    auto quota = fill(DeStruct(), number);
    quota.strDeId = number;
    quota.strDeCode = dialogs::QuotaLibraryCode();
    return quota;
}
