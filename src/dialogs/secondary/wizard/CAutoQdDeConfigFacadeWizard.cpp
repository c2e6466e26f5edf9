// The entry point of the facade that shows the wizard form, beside it as that of the main dialog is.

#include "presenter/CAutoQdDeConfigFacade.h"

#include "dialogs/process/ResourceContext.h"
#include "dialogs/secondary/wizard/COnlineAutoConfigDlg.h"

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
