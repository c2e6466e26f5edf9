#pragma once

#include "platform/Text.h"

#include <QtCore/QList>
#include <QtWidgets/QDialog>

#include <functional>
#include <utility>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace editor {

/// Rule files to choose from: the words that are shown, and the path text.
using FileChoices = QList<std::pair<QString, CString>>;

/// Asks for the name of a rule file, and from what it is made when there is a choice. Says why a name cannot
/// be taken while it is typed, and accepts none that cannot.
class NameDialog : public QDialog
{
public:
    struct Question
    {
        QString title;
        QString explanation; ///< above the fields; may be empty
        QString accept;      ///< the button
        CString name;        ///< proposed
        /// Why a name cannot be taken; empty when it can.
        std::function<CString(const CString& name)> fault;
        FileChoices sources{}; ///< nothing to choose when empty; the first one is chosen at first
    };

    NameDialog(QWidget* parent, Question question);

    CString Name() const;
    /// The path text of what was chosen; empty when there was nothing to choose.
    CString Source() const;

private:
    void ShowFault();

    Question m_question;
    QComboBox* m_source;
    QLineEdit* m_name;
    QLabel* m_fault;
    QPushButton* m_accept;
};

/// Asks which rule file is to be the current configuration before the present one is deleted.
class NextDialog : public QDialog
{
public:
    NextDialog(QWidget* parent, const QString& question, const FileChoices& files);

    /// The path text of the chosen file.
    CString Next() const;

private:
    QComboBox* m_files;
};

} // namespace editor
