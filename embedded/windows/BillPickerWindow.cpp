#include "embedded/windows/BillPickerWindow.h"

#include "embedded/windows/ItemPane.h"
#include "embedded/windows/LibraryLists.h"
#include "host/UserMessage.h"

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSplitter>

#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace embedded {

namespace {

/// The number that the user gives instead of `number`; nothing when there is to be none.
std::optional<CString> AskNumber(QWidget& parent, const CString& number)
{
    QInputDialog dialog(&parent);
    dialog.setWindowTitle(u"清单编号"_s);
    dialog.setLabelText(u"以此编号选用清单:"_s);
    dialog.setTextValue(number);
    dialog.setOkButtonText(u"确定"_s);
    dialog.setCancelButtonText(u"取消"_s);
    if (dialog.exec() != QDialog::Accepted || dialog.textValue().trimmed().isEmpty()) return std::nullopt;
    return dialog.textValue().trimmed();
}

} // namespace

BillPickerWindow::BillPickerWindow(QWidget& parent, const LibraryContents& contents,
                                   std::shared_ptr<PickerMemory> memory)
    : PickerWindow(parent, contents, std::move(memory)),
      m_quotas(new ItemPane(u"定额(&Q):"_s, u"定额"_s, ItemPane::SearchIn::Scope, &Lists())),
      m_allQuotas(new QCheckBox(u"全部定额(&A)"_s, m_quotas))
{
    setWindowTitle(u"套清单"_s);
    m_allQuotas->setToolTip(u"不勾选时只列出所选清单的常用定额"_s);
    m_quotas->SearchLine().addWidget(m_allQuotas);
    auto* pickBill = new QPushButton(u"选用清单(&B)"_s, this);
    auto* pickQuota = new QPushButton(u"选用定额(&D)"_s, this);
    connect(pickBill, &QPushButton::clicked, this, [this] { PickBill(); });
    connect(pickQuota, &QPushButton::clicked, this, [this] { PickQuota(); });
    connect(m_allQuotas, &QCheckBox::toggled, this, [this] { ShowQuotas(); });
    MainPane().OnPicked([this] { PickBill(); });
    MainPane().OnSelected([this, pickBill] {
        pickBill->setEnabled(MainPane().Current() != nullptr);
        ShowQuotas();
    });
    m_quotas->OnPicked([this] { PickQuota(); });
    m_quotas->OnSelected([this, pickQuota] { pickQuota->setEnabled(m_quotas->Current() != nullptr); });
    pickBill->setEnabled(false);
    pickQuota->setEnabled(false);
    Finish({pickBill, pickQuota});
}

void BillPickerWindow::Load()
{
    m_quotasOfBills = QuotasOfBills(Contents());
    m_quotas->SetItems(QuotaItems(Contents()));
    MainPane().SetItems(BillItems(Contents()));
    Chapters().SetChapters(u"全部清单"_s, BillChapters(Contents()));
    ShowQuotas();
}

void BillPickerWindow::PickBill()
{
    const PickerItem* const bill = MainPane().Current();
    if (bill == nullptr) return;
    SPickedQd record{0, bill->unitCode, bill->withAnnex, bill->number};
    if (m_asksNumber) {
        const std::optional<CString> number = AskNumber(*this, record.strNumber);
        if (!number) return;
        record.strNumber = *number;
    }
    Send(host::QdPickedMessage, &record);
}

void BillPickerWindow::PickQuota()
{
    if (const PickerItem* const quota = m_quotas->Current()) SendQuota(*quota);
}

void BillPickerWindow::ShowQuotas()
{
    if (m_allQuotas->isChecked()) {
        m_quotas->SetScope(std::nullopt);
        return;
    }
    const PickerItem* const bill = MainPane().Current();
    m_quotas->SetScope(bill == nullptr ? std::vector<int>() : m_quotasOfBills.value(bill->number));
}

} // namespace embedded
