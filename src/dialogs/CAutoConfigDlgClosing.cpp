#include "dialogs/CAutoConfigDlg.h"

#include "platform/Apart.h"

#include <QtGui/QSessionManager>

#include <exception>
#include <functional>

// What is saved, and how, when the dialog closes or the session ends.

void CAutoConfigDlg::FlushAndSave()
{
    FlushGrid();
    m_presenter->Save();
}

bool CAutoConfigDlg::SaveForLogOff(const std::function<bool()>& mayShow)
{
    std::exception_ptr failure;
    try {
        FlushAndSave();
    } catch (...) {
        failure = std::current_exception();
    }
    if (failure && mayShow()) RunGuarded([&failure] { std::rethrow_exception(failure); });
    return !failure;
}

// A session that ends in the middle of reading or writing has to wait: a second save must not run into that.
void CAutoConfigDlg::OnLogOff(QSessionManager& session)
{
    if (!isVisible()) return;
    if (platform::IsInLongWork() || !SaveForLogOff([&session] { return session.allowsErrorInteraction(); }))
        session.cancel();
}

// The result of the save is not looked at; what it raises keeps the dialog open.
void CAutoConfigDlg::SaveAndHidePickers()
{
    FlushAndSave();
    m_billPicker.ShowWindow(false);
    m_quotaPicker.ShowWindow(false);
}

void CAutoConfigDlg::OnCancel()
{
    SaveAndHidePickers();
    TemplateDialog::OnCancel();
}

void CAutoConfigDlg::OnClose()
{
    SaveAndHidePickers();
    TemplateDialog::OnClose();
}
