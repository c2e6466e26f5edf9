#pragma once

#include "platform/Export.h"
#include "platform/Text.h"
#include "platform/Window.h"

/// The host's remaining windows, under the host's names.

namespace KtGlobalDlg {

/// The host's modal calculator.
class KTQDDE_EXPORT CFaceGlobalDlg
{
public:
    /// Gives 1 on accept, with `result` filled; anything else leaves `result` alone.
    int ShowCalculatorDlg(const CString& categoryText, const CString& text, CString& result, CWnd* parent);
};

} // namespace KtGlobalDlg

namespace KtNetService {

/// The host's cloud disk.
class KTQDDE_EXPORT CNetDiskFunc
{
public:
    static CNetDiskFunc& GetInstance();
    /// Runs the dialog on the shared folder of that name to its end.
    void ShowDialog(const CString& name, bool flag);

private:
    CNetDiskFunc() = default;
};

} // namespace KtNetService

/// The host's main frame, on which dialogs are centred; null when there is none.
KTQDDE_EXPORT CWnd* acedGetAcadFrame();
