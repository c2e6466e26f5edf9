#include "dialogs/CAutoConfigDlg.h"

#include "dialogs/ProjectMode.h"
#include "host/NvKtDataMng.h"
#include "presenter/PickedItems.h"
#include "widgets/TreeControl.h"

#include <cstdint>
#include <variant>
#include <vector>

// From the items of a rule to the rows of the grid, and from rows back into the tree.

namespace {

/// Background of the columns 1 to 4 of a bill row, 0x00BBGGRR.
constexpr std::uint32_t BillColour = 0xFFFF80;

bool SameCode(const CString& a, const CString& b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

} // namespace

void CAutoConfigDlg::SelectGridRow(int row)
{
    m_grid.SetSelectedRange(row, MyGridCtrl::NumberColumn, row, m_grid.GetColumnCount() - 1, false, true);
    m_grid.SetFocusCell(row, MyGridCtrl::NumberColumn);
    m_grid.setFocus();
}

// Items of other libraries are left out of the view; they stay in the tree and in the file.
void CAutoConfigDlg::FillGrid(const std::vector<ConfigNode*>& rules)
{
    m_grid.DeleteNonFixedRows();
    const QTreeWidgetItem* selected = SelectedRule();
    // A category whose grid could not be set up has no columns either.
    if (selected == nullptr || m_grid.GetColumnCount() == 0) return;
    const int ruleId = widgets::DataOf(selected);
    const bool billMode = dialogs::IsBillMode();
    for (const ConfigNode* rule : rules) {
        if (rule->GetId() != ruleId) continue;
        if (!billMode) {
            AppendQuotas(rule->GetDe());
            continue;
        }
        for (const QdNode* bill : rule->GetQd())
            AppendBill(*bill);
    }
    m_grid.Refresh();
}

void CAutoConfigDlg::AppendBill(const QdNode& bill)
{
    const QdStruct& record = bill.GetRecord();
    if (!SameCode(NvKtDataMng::CAtt().GetQdCode(), record.strQdCode)) return;
    const int row = m_grid.AppendItem(
        MyGridCtrl::BillRow, bill.GetId(),
        {record.strQdId, record.strName, record.strUnit, record.strFormula, record.strAnnex});
    for (int column = MyGridCtrl::NumberColumn; column <= MyGridCtrl::FormulaColumn; ++column)
        if (const auto cell = m_grid.GetCell(row, column)) cell->SetBackClr(BillColour);
    AppendQuotas(bill.GetDe());
}

void CAutoConfigDlg::AppendQuotas(const std::vector<DeNode*>& quotas)
{
    const CString code = dialogs::QuotaLibraryCode();
    for (const DeNode* quota : quotas) {
        const DeStruct& record = quota->GetRecord();
        if (!SameCode(code, record.strDeCode)) continue;
        m_grid.AppendItem(
            MyGridCtrl::QuotaRow, quota->GetId(),
            {record.strDeId, record.strName, record.strUnit, record.strFormula, record.strAnnex});
    }
}

void CAutoConfigDlg::SelectItem(const CString& number)
{
    // The row behind the last one reads as empty; it is no row to be selected, though.
    for (int row = 1; row < m_grid.GetRowCount(); ++row)
        if (m_grid.GetItemText(row, MyGridCtrl::NumberColumn) == number) SelectGridRow(row);
}

void CAutoConfigDlg::FlushGrid()
{
    m_grid.Refresh();
    if (m_grid.GetRowCount() < 2) return;
    for (int row = 1; row < m_grid.GetRowCount(); ++row) {
        m_grid.SetFocusCell(
            row, MyGridCtrl::NumberColumn); // ends an open edit, so that its text is taken over, too
        CommitGridRow(row);
    }
}

void CAutoConfigDlg::CommitGridRow(int row)
{
    const bool billMode = dialogs::IsBillMode();
    CPath path{};
    if (!(billMode ? GetBillPathOfRow(row, path) : GetRulePath(path))) return;
    path.deId = m_grid.IdOf(row);
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
        number = m_grid.GetItemText(row, MyGridCtrl::NumberColumn);
        record.strName = m_grid.GetItemText(row, MyGridCtrl::NameColumn);
        record.strUnit = m_grid.GetItemText(row, MyGridCtrl::UnitColumn);
        record.strUnitCode = UnitCodeOf(record.strUnit);
        record.strFormula = m_grid.GetItemText(row, MyGridCtrl::FormulaColumn);
        if (m_grid.GetColumnCount() > MyGridCtrl::AnnexColumn)
            record.strAnnex = m_grid.GetItemText(row, MyGridCtrl::AnnexColumn);
        return record;
    };
    CString number;
    if (m_grid.KindOf(row) == MyGridCtrl::BillRow) {
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
