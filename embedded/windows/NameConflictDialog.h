#pragma once

#include "embedded/windows/TemplateTransfer.h"

#include <QtWidgets/QDialog>

class QLabel;
class QLineEdit;
class QPushButton;

namespace embedded {

/// Asks what is to be done about a name that is taken: overwrite the file, take another name, or leave it.
/// Escape and the close box leave it; Enter takes the other name that is proposed.
class NameConflictDialog : public QDialog
{
public:
    NameConflictDialog(const CString& folder, const CString& name, QWidget* parent);
    ~NameConflictDialog() override;

    /// What the user has decided once the dialog has ended.
    ConflictDecision Decision() const;

private:
    void MakeButtons();
    void Check();
    void End(ConflictDecision::Action action);

    CString m_folder;
    ConflictDecision::Action m_action = ConflictDecision::Cancel;
    QLineEdit* m_name;
    QLabel* m_fault;
    QPushButton* m_rename = nullptr;
};

} // namespace embedded
