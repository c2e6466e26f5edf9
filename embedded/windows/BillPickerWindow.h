#pragma once

#include "embedded/windows/PickerWindow.h"

#include <QtCore/QHash>

#include <vector>

class QCheckBox;

namespace embedded {

/// The picker of bill mode: the bill library above, below it the quotas that usually stand under the selected
/// bill, or all quotas. Sends a bill and its quotas one by one, each as the user picks it: only the parent
/// knows whether the bill was taken, and where a quota goes.
class BillPickerWindow : public PickerWindow
{
public:
    BillPickerWindow(QWidget& parent, const LibraryContents& contents, std::shared_ptr<PickerMemory> memory);

    void Load() override;
    /// Whether a person is asked for the number under which a picked bill is sent.
    void AskForNumber(bool ask) { m_asksNumber = ask; }

private:
    void PickBill();
    void PickQuota();
    void ShowQuotas();

    bool m_asksNumber = true;
    QHash<CString, std::vector<int>> m_quotasOfBills;
    ItemPane* m_quotas;
    QCheckBox* m_allQuotas;
};

} // namespace embedded
