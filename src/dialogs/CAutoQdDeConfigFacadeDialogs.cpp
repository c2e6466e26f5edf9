// The entry point of the facade that shows the main dialog. It stands here and not beside the others so that
// a program without windows can use those; the wizard's stands beside the wizard.

#include "presenter/CAutoQdDeConfigFacade.h"

#include "dialogs/CAutoConfigDlg.h"
#include "dialogs/process/ResourceContext.h"

// Both arguments are ignored, and hosts rely on it: the dialog gets no parent window, so it can go behind the
// host's, and it stands in the middle of the main frame wherever the rectangle may be.
void CAutoQdDeConfigFacade::StartQdDeConfig(CWnd* /*parent*/, const CRect& /*area*/)
{
    dialogs::ResourceContext context;
    CAutoConfigDlg dialog{CString()};
    dialog.DoModal();
    context.GiveMessagesBack();
}
