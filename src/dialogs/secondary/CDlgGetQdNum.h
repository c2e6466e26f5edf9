#pragma once

#include "dialogs/template/TemplateDialog.h"
#include "host/Records.h"

/// The dialog that turns a bill number picked from the library into the number under which the bill item
/// enters a rule: one that the project has used before, or the base number with a new suffix, which the
/// dialog proposes. Works on texts only. Made for one use: set the input, run it, and after `IdOk` read the
/// number.
class CDlgGetQdNum : public dialogs::TemplateDialog
{
public:
    explicit CDlgGetQdNum(CWnd* parent = nullptr);

    /// Input: the picked number.
    void SetNumber(const CString& number) { m_number = number; }
    /// Input: a number that is in the rule already.
    void AddUsedNumber(const CString& number) { m_usedNumbers.append(number); }
    /// Input: a history item. Lost when the dialog starts, which asks the project itself, unless the coding
    /// rule is unknown; and then nothing shows it.
    void AddHistoryItem(const SQdInfo& item) { m_historyItems.append(item); }

    /// After `IdOk`: the resulting number.
    const CString& GetNumber() const noexcept { return m_number; }
    /// After `IdOk`: the bill number whose calculation items are to be copied; empty for none.
    const CString& GetCopySource() const noexcept { return m_copySource; }

protected:
    void DoDataExchange(dialogs::DataExchange& exchange) override;
    void OnInitDialog() override;
    void OnOK() override;

private:
    using SuffixMaker = void (CDlgGetQdNum::*)();

    bool ApplyCodingRule();
    void LoadHistory();
    void ShowHistoryItem();
    void ProposeSuffix();
    void ProposeFreeSuffix();
    void OnUseExisting();
    void OnUseNew();
    bool TakeExistingNumber();
    bool TakeNewNumber();
    bool IsInHistory(const CString& number) const;

    int m_numberKind;
    CString m_suffix;
    CString m_baseNumber;
    CString m_number;
    CString m_copySource;
    CStringArray m_usedNumbers;
    CArray<SQdInfo> m_historyItems;
    int m_codeLength = 0;
    int m_suffixLength = 0;
    SuffixMaker m_makeSuffix = nullptr;
};
