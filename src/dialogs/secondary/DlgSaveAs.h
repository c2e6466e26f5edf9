#pragma once

#include "dialogs/template/TemplateDialog.h"

/// The dialog in which the user names a rule file, to load, create or save it. Lists the rule files of the
/// configuration folder and gives a path; it touches no file. Made for one use.
class DlgSaveAs : public dialogs::TemplateDialog
{
public:
    /// The file commands. Any other value behaves like none of them and keeps the template's texts.
    enum Mode {
        Load = 0,   ///< the name can only be chosen from the list
        New = 1,    ///< the current file cannot be chosen, others are overwritten after a question
        SaveAs = 2, ///< any file is overwritten after a question, the current one too
    };

    /// `currentPath` is the path text of the current rule file; empty protects nothing. Raises
    /// `host::NoHostError` when no host is installed.
    DlgSaveAs(int mode, CWnd* parent, const CString& currentPath);

    /// After `DoModal()` gave `IdOk`: the path text of the chosen file. ".xml" is added unless the name ends
    /// in it, in any letter case.
    CString GetChosenPath() const;

protected:
    void DoDataExchange(dialogs::DataExchange& exchange) override;
    void OnInitDialog() override;
    void OnOK() override;

private:
    void ScanFolder(const CString& folder);
    void ApplyMode();
    void OnFileSelected();
    bool CheckFileName(const CString& name) const;
    bool FileExists();
    bool MayBeWritten();
    bool IsCurrentFile() const;

    CString m_folder;
    CStringArray m_fileNames;
    int m_mode;
    CString m_fileName;
    CString m_currentPath;
};
