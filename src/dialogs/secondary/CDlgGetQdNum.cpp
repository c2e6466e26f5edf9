#include "dialogs/secondary/CDlgGetQdNum.h"

#include "dialogs/template/DialogTemplates.h"
#include "host/BillNumbering.h"
#include "host/NvKtDataMng.h"
#include "host/NvQdInfo.h"
#include "platform/Messages.h"
#include "widgets/ListControls.h"

#include <QtWidgets/QComboBox>
#include <QtWidgets/QListWidget>

using namespace Qt::StringLiterals;
using dialogs::DataExchange;
using dialogs::DialogEvent;
using dialogs::IdOk;
using NvQdInfo::IBillLib;

namespace {

enum NumberControl {
    DetailEdit = 1069,
    BaseEdit = 1076,
    SuffixEdit = 1077,
    ExistingRadio = 1111,
    NewRadio = 1112,
    HistoryList = 1113,
    SourceCombo = 1114,
};

enum NumberKind {
    ExistingNumber = 0,
    NewNumber = 1,
};

/// The texts of a list's lines.
CStringArray LinesOf(const QListWidget& list)
{
    CStringArray lines;
    for (int index = 0; index < list.count(); ++index)
        lines.append(list.item(index)->text());
    return lines;
}

} // namespace

CDlgGetQdNum::CDlgGetQdNum(CWnd* parent)
    : TemplateDialog(dialogs::templates::GetQdNum(), parent), m_numberKind(NewNumber)
{
    On(DialogEvent::Command, ExistingRadio, &CDlgGetQdNum::OnUseExisting);
    On(DialogEvent::Command, NewRadio, &CDlgGetQdNum::OnUseNew);
    On(DialogEvent::ListSelection, HistoryList, &CDlgGetQdNum::ShowHistoryItem);
}

void CDlgGetQdNum::DoDataExchange(DataExchange& exchange)
{
    exchange.Radio(ExistingRadio, m_numberKind);
    exchange.Text(SuffixEdit, m_suffix);
    exchange.Text(BaseEdit, m_baseNumber);
}

// Without a known coding rule the dialog stays as the template made it: no base number, no history, no
// proposal.
void CDlgGetQdNum::OnInitDialog()
{
    TemplateDialog::OnInitDialog();
    IBillLib::GetEnCodeRule(m_codeLength, m_suffixLength);
    if (!ApplyCodingRule()) return;
    LoadHistory();
    (this->*m_makeSuffix)();
    m_numberKind = NewNumber;
    UpdateData(DataExchange::Direction::ToControls);
    OnUseNew();
}

bool CDlgGetQdNum::ApplyCodingRule()
{
    const auto numbering = host::BillNumbering::Of(m_codeLength, m_suffixLength);
    if (!numbering) return false;
    m_suffix = numbering->SuffixOf(m_number);
    m_number = numbering->BaseOf(m_number);
    m_makeSuffix =
        numbering->KeepsFreeSuffix() ? &CDlgGetQdNum::ProposeFreeSuffix : &CDlgGetQdNum::ProposeSuffix;
    return true;
}

void CDlgGetQdNum::LoadHistory()
{
    m_historyItems.clear();
    NvKtDataMng::CQdHistoryMng().GetQdInfoByQdNum(m_number, m_historyItems);
    auto& list = Item<QListWidget>(HistoryList);
    auto& sources = Item<QComboBox>(SourceCombo);
    widgets::AddString(sources, {});
    for (int index = 0; index < m_historyItems.size(); ++index) {
        // By index, although the list is a sorted one: its lines keep step with the items.
        widgets::InsertString(list, index, m_historyItems.at(index).strNumber);
        widgets::AddString(sources, m_historyItems.at(index).strNumber);
    }
    widgets::SetCurSel(list, 0);
    ShowHistoryItem();
    m_baseNumber = m_number;
    if (m_historyItems.isEmpty()) GetDlgItem(ExistingRadio)->setEnabled(false);
    UpdateData(DataExchange::Direction::ToControls);
}

void CDlgGetQdNum::ShowHistoryItem()
{
    const int selected = widgets::GetCurSel(Item<QListWidget>(HistoryList));
    if (selected < 0) return;
    const SQdInfo& item = m_historyItems.at(selected);
    // A selection that the user made in the field goes with the former text.
    SetItemText(DetailEdit, item.strName + u"\r\n"_s + item.strUnit);
    UpdateData(DataExchange::Direction::ToControls);
}

void CDlgGetQdNum::ProposeSuffix()
{
    m_suffix = host::SuffixAfter(LinesOf(Item<QListWidget>(HistoryList)), m_suffixLength);
    UpdateData(DataExchange::Direction::ToControls);
}

void CDlgGetQdNum::ProposeFreeSuffix()
{
    m_suffix = host::BillNumbering::FreeSuffix(m_baseNumber, m_suffix,
                                               LinesOf(Item<QListWidget>(HistoryList)), &IBillLib::IsInQdk);
    UpdateData(DataExchange::Direction::ToControls);
}

bool CDlgGetQdNum::IsInHistory(const CString& number) const
{
    return widgets::FindStringExact(Item<QListWidget>(HistoryList), number) >= 0;
}

void CDlgGetQdNum::OnUseExisting()
{
    UpdateData(DataExchange::Direction::ToMembers);
    GetDlgItem(HistoryList)->setEnabled(true);
    GetDlgItem(SuffixEdit)->setEnabled(false);
    GetDlgItem(SourceCombo)->setEnabled(false);
    UpdateData(DataExchange::Direction::ToControls);
}

void CDlgGetQdNum::OnUseNew()
{
    UpdateData(DataExchange::Direction::ToMembers);
    GetDlgItem(HistoryList)->setEnabled(false);
    GetDlgItem(SuffixEdit)->setEnabled(true);
    GetDlgItem(SourceCombo)->setEnabled(true);
    UpdateData(DataExchange::Direction::ToControls);
}

void CDlgGetQdNum::OnOK()
{
    UpdateData(DataExchange::Direction::ToMembers);
    if (m_numberKind == ExistingNumber && !TakeExistingNumber()) return;
    if (m_numberKind == NewNumber && !TakeNewNumber()) return;
    EndDialog(IdOk);
}

bool CDlgGetQdNum::TakeExistingNumber()
{
    const auto& list = Item<QListWidget>(HistoryList);
    const int selected = widgets::GetCurSel(list);
    m_number = selected < 0 ? CString() : list.item(selected)->text();
    if (!m_usedNumbers.contains(m_number)) return true;
    platform::ShowWarning(u"同一构件不能多次套同一清单 "_s);
    return false;
}

// Only the length of the suffix is looked at, not whether it is made of digits, and neither the rule nor the
// library is asked whether it has the number.
bool CDlgGetQdNum::TakeNewNumber()
{
    if (m_suffix.size() != m_suffixLength) {
        platform::ShowWarning(u"新清单号不符合规范"_s);
        ProposeSuffix();
        return false;
    }
    m_number = m_baseNumber + m_suffix;
    if (IsInHistory(m_number)) {
        platform::ShowWarning(u"清单已经套用"_s);
        return false;
    }
    m_copySource = Item<QComboBox>(SourceCombo).currentText();
    return true;
}
