#include "editor/docks/details/ItemPickers.h"

#include "dialogs/secondary/CDlgGetQdNum.h"
#include "host/NvKtDataMng.h"
#include "rules/model/Configuration.h"

namespace editor {

namespace {

/// Where the category stands in the bill library, as its picker takes it.
CString PositionOf(const CString& category)
{
    return NvKtDataMng::CSys().GetIndexPath(category + u'\\').replace(u'\\', u'.');
}

} // namespace

void ItemPickers::Show(bool isBillMode, const CString& category)
{
    m_category = category;
    if (isBillMode) {
        if (!m_bills) {
            m_bills.emplace();
            m_bills->SetShowGetQdNumDlg(false);
            m_bills->Create(&m_receiver);
        }
        if (m_bills->IsWindowVisible()) return;
        m_bills->ShowWindow(true);
        m_bills->MoveWndToRight(&m_receiver);
        m_bills->InitQdDeData();
        m_bills->SetTreePosition(PositionOf(category));
        return;
    }
    if (!m_quotas) {
        m_quotas.emplace();
        m_quotas->Create(&m_receiver);
    }
    m_quotas->EnableWindow(true);
    if (m_quotas->IsWindowVisible()) return;
    m_quotas->ShowWindow(true);
    m_quotas->MoveWndToRight(&m_receiver);
    m_quotas->InitDeData();
}

void ItemPickers::Follow(const CString& category)
{
    if (category == m_category || !m_bills || !m_bills->IsWindowVisible()) return;
    m_category = category;
    m_bills->SetTreePosition(PositionOf(category));
}

void ItemPickers::Forget()
{
    m_bills.reset();
    m_quotas.reset();
}

std::optional<CString> AskForBillNumber(const CString& picked, const std::vector<const rules::Rule*>& rules,
                                        CWnd* parent)
{
    CDlgGetQdNum dialog(parent);
    dialog.SetNumber(picked);
    for (const rules::Rule* rule : rules)
        for (const rules::BillItem& bill : rule->bills)
            dialog.AddUsedNumber(bill.record.strQdId);
    if (dialog.DoModal() != dialogs::IdOk) return std::nullopt;
    return dialog.GetNumber();
}

} // namespace editor
