#pragma once

#include "dialogs/CAutoConfigDlg.h"

#include <QtGui/QFont>
#include <QtGui/QPalette>

/// The main dialog as one step of a wizard that the host runs around it: the same rule editing on a file that
/// the caller names, with 上一步, 下一步 and 取消 in place of the file commands, the names of the libraries,
/// and a link to the caller's explanation.
///
/// Every way out writes the file, 取消 too: a result of 0 does not mean an unchanged file.
class COnlineAutoConfigDlg : public CAutoConfigDlg
{
public:
    /// `configFile` is as with the main dialog. The library names are shown up to their first ".mdb", which
    /// is looked for in small letters only. An empty `note` means no link; `allowBack` enables 上一步. Raises
    /// `host::NoHostError` without a host that has windows.
    COnlineAutoConfigDlg(const CString& configFile, const CString& billFile, const CString& quotaFile,
                         const CString& note, bool allowBack, CWnd* parent);
    ~COnlineAutoConfigDlg() override;

    /// How the dialog ended: 1 for 下一步, -1 for 上一步, 0 for 取消 and every other way, also after a step
    /// whose save raised and left the dialog open.
    int StepResult() const noexcept { return m_stepResult; }

protected:
    void OnInitDialog() override;
    void changeEvent(QEvent* event) override;

private:
    void EnterEvents();
    void ShowWizardControls(bool show);
    void ShowLibrary(int id, const CString& file);
    void UnderlineLink();
    void OnNextStep();
    void OnPreviousStep();
    void EndStep(int outcome);
    void OnCancelStep();
    void OnNote();
    /// The colours of a control in which it differs from `base`, those of the dialog: the text colour of the
    /// warning and of the link, nothing for any other.
    QPalette OnControlColour(int id, const QPalette& base) const;
    void ColourControls();

    int m_stepResult = 0;
    CString m_billFile;
    CString m_quotaFile;
    CString m_note;
    bool m_allowBack;
    QFont m_linkFont;
};
