// The entry points of the facade that show a dialog. They stand here and not beside the others so that a
// program without windows can use those.

#include "presenter/CAutoQdDeConfigFacade.h"

#include "dialogs/CAutoConfigDlg.h"
#include "dialogs/ResourceContext.h"
#include "dialogs/secondary/COnlineAutoConfigDlg.h"

// Both arguments are ignored, and hosts rely on it: the dialog gets no parent window, so it can go behind the
// host's, and it stands in the middle of the main frame wherever the rectangle may be.
void CAutoQdDeConfigFacade::StartQdDeConfig(CWnd* /*parent*/, const CRect& /*area*/)
{
    dialogs::ResourceContext context;
    CAutoConfigDlg dialog{CString()};
    dialog.DoModal();
    context.GiveMessagesBack();
}

int CAutoQdDeConfigFacade::StartOnlineConfig(const CString& configFile, const CString& billFile,
                                             const CString& quotaFile, const CString& note, bool allowBack,
                                             CWnd* parent)
{
    dialogs::ResourceContext context;
    COnlineAutoConfigDlg dialog(configFile, billFile, quotaFile, note, allowBack, parent);
    dialog.DoModal();
    context.GiveMessagesBack();
    return dialog.StepResult();
}
