#include "dialogs/CAutoConfigDlg.h"

#include "dialogs/ProjectMode.h"
#include "dialogs/secondary/CDlgGetQdNum.h"
#include "host/HostWindows.h"
#include "host/NvQdInfo.h"
#include "platform/Messages.h"
#include "presenter/PickedItems.h"
#include "widgets/TreeControl.h"

#include <QtWidgets/QTreeWidget>

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <vector>

// What picks, changes and deletes bill and quota items.

using namespace Qt::StringLiterals;

namespace {

/// The part of a bill number that the items of one kind share.
constexpr qsizetype BaseNumberLength = 9;

} // namespace

CString CAutoConfigDlg::FormulaFor(const CString& ruleOfItem) const
{
    if (!ruleOfItem.isEmpty()) return ruleOfItem;
    const std::optional<CString> formula = CategoryFormula(GetCategoryText());
    if (!formula) platform::ShowWarning(u"计算规则不对应"_s);
    return formula.value_or(CString());
}

// Silent wherever it stops, in contrast to `OnDePicked`.
int CAutoConfigDlg::OnQdPicked(const SPickedQd* picked)
{
    if (picked == nullptr) return -1;
    const CString pickedNumber = picked->strNumber;
    const std::optional<CString> number = AskForNumber(pickedNumber);
    SQdInfo info;
    if (!number || !NvQdInfo::IBillLib::GetQdInfo(pickedNumber, info)) return 0;
    const QdStruct record =
        RecordOf(info, *number, NvKtDataMng::CAtt().GetQdCode(), FormulaFor(info.strCalRule));
    CPath path{};
    if (!GetRulePath(path)) return 0;
    m_rules.clear();
    if (!m_presenter->AddQd(record, path, m_rules)) return 0;
    FillGrid(m_rules);
    SelectItem(record.strQdId);
    return 0;
}

std::optional<CString> CAutoConfigDlg::AskForNumber(const CString& picked)
{
    CDlgGetQdNum dialog;
    dialog.SetNumber(picked);
    CPath path{};
    if (!GetRulePath(path)) return std::nullopt;
    const ConfigNode* rule = m_presenter->GetConfig(path);
    if (rule == nullptr) return std::nullopt;
    for (const QdNode* bill : rule->GetQd()) {
        const QdStruct& record = bill->GetRecord();
        dialog.AddUsedNumber(record.strQdId);
        if (!picked.contains(record.strQdId.left(BaseNumberLength))) continue;
        SQdInfo item;
        item.strNumber = record.strQdId;
        item.strName = record.strName;
        dialog.AddHistoryItem(item);
    }
    if (dialog.DoModal() != dialogs::IdOk) return std::nullopt;
    return dialog.GetNumber();
}

int CAutoConfigDlg::OnDePicked(const SPickedDe* picked)
{
    if (picked == nullptr) return -1;
    const bool billMode = dialogs::IsBillMode();
    CPath path{};
    if (!(billMode ? GetBillPathOfFocus(path) : GetRulePath(path))) return 0;
    const DeStruct record = RecordOf(*picked, dialogs::QuotaLibraryCode(), FormulaFor(picked->strCalRule));
    m_rules.clear();
    const bool added = billMode ? m_presenter->AddDe2QdNode(record, path, m_rules)
                                : m_presenter->AddDe2ConfigNode(record, path, m_rules);
    if (!added) {
        platform::ShowWarning(u"套定额失败"_s);
        return 0;
    }
    FillGrid(m_rules);
    SelectItem(record.strDeId);
    return 0;
}

void CAutoConfigDlg::OnDeleteItems()
{
    CPath path{};
    if (!GetRulePath(path)) return;
    std::vector<int> rows; // from the bottom up
    m_grid.GetSelectedRows(rows);
    if (dialogs::IsBillMode())
        DeleteFromBills(path, rows);
    else
        DeleteFromRule(path, rows);
    m_rules.clear();
    m_presenter->GetConfig(path, m_rules);
    FillGrid(m_rules);
    // Above the topmost row: after a deletion of row 1 that is the header.
    const int top = rows.empty() ? 0 : rows.back();
    SelectGridRow(top < 1 ? top + 1 : top - 1);
}

// A selected header counts as the row of a bill item with the id 0, which only a file without ids can hold.
void CAutoConfigDlg::DeleteFromBills(const CPath& path, const std::vector<int>& rows)
{
    std::set<int> bills;
    std::map<int, std::set<int>> quotas;
    for (const int row : rows) {
        const int id = m_grid.IdOf(row);
        if (m_grid.KindOf(row) == MyGridCtrl::BillRow) {
            bills.insert(id);
        } else if (const int billRow = m_grid.BillRowOf(row); billRow >= 1) {
            quotas[m_grid.IdOf(billRow)].insert(id);
        }
    }
    if (!bills.empty()) m_presenter->DelQd(path, bills);
    if (!quotas.empty()) m_presenter->DelDeInQdNode(path, quotas);
}

void CAutoConfigDlg::DeleteFromRule(const CPath& path, const std::vector<int>& rows)
{
    // One call per row with all ids so far; those that are gone already do no harm.
    std::set<int> quotas;
    for (const int row : rows) {
        if (m_grid.KindOf(row) != MyGridCtrl::QuotaRow) continue;
        quotas.insert(m_grid.IdOf(row));
        m_presenter->DelDeInConfigNode(path, quotas);
    }
}

void CAutoConfigDlg::OnGridCellClick(const dialogs::Notice& notice)
{
    const int row = notice.row;
    if (!m_grid.IsValid(row, notice.column) || row == 0 || notice.column != MyGridCtrl::FormulaColumn) return;
    const CString text = m_grid.GetItemText(row, MyGridCtrl::FormulaColumn);
    const auto item = AddressOfRow(row);
    CString result;
    const int answer = KtGlobalDlg::CFaceGlobalDlg().ShowCalculatorDlg(GetCategoryText(), text, result, this);
    // The host may have moved the selections while its window was open: then the row is another item's.
    if (answer != 1 || result == text || AddressOfRow(row) != item) return;
    m_grid.SetItemText(row, MyGridCtrl::FormulaColumn, result);
    CommitGridRow(row);
}

void CAutoConfigDlg::OnGridCellChoice(const dialogs::Notice& notice)
{
    if (notice.column != MyGridCtrl::UnitColumn && notice.column != MyGridCtrl::AnnexColumn) return;
    m_grid.SetItemText(notice.row, notice.column, notice.text);
    CommitGridRow(notice.row);
}
