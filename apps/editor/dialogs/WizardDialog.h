#pragma once

#include "platform/Text.h"

#include <QtWidgets/QDialog>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QPlainTextEdit;

namespace editor {

/// What the wizard is started with.
struct WizardStart
{
    CString ruleFile;  ///< path text
    CString billFile;  ///< name of the bill library
    CString quotaFile; ///< name of the quota library
    CString note;      ///< text of the explanation; empty for none
    bool allowBack = true;
};

/// Asks for what the wizard is started with. Starts nothing.
class WizardDialog : public QDialog
{
public:
    /// `start` is proposed; `ruleFiles` are the path texts that can be chosen without browsing.
    WizardDialog(QWidget* parent, const WizardStart& start, const CStringArray& ruleFiles);

    /// After the dialog was accepted.
    WizardStart Start() const;

private:
    void FillRuleFiles(const CStringArray& ruleFiles, const CString& chosen);
    void Build();
    void Browse();

    QComboBox* m_ruleFile;
    QLineEdit* m_billFile;
    QLineEdit* m_quotaFile;
    QPlainTextEdit* m_note;
    QCheckBox* m_allowBack;
};

} // namespace editor
