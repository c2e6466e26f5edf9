#pragma once

#include "embedded/data/host/CreateProject.h"
#include "embedded/data/host/EmbeddedHost.h"
#include "embedded/data/project/ProjectChoice.h"

#include <QtWidgets/QDialog>

#include <functional>
#include <optional>

class QComboBox;
class QLineEdit;
class QPushButton;

namespace editor {

/// Gives what an office offers to new projects; nothing when it does not, which the user has been told then.
using ReadOffice = std::function<std::optional<embedded::ProjectChoice>(const CString& office)>;

/// Asks for what a new project needs: a folder, an office where this machine knows some, its mode, its
/// specialty and its libraries. Creates nothing.
class NewProjectDialog : public QDialog
{
public:
    /// `folder` is proposed. `offices` are the names that can be chosen.
    NewProjectDialog(QWidget* parent, const QString& folder, const CStringArray& offices = {},
                     ReadOffice read = {});

    /// After the dialog was accepted: the folder, native, and the options.
    QString Folder() const;
    embedded::ProjectOptions Options() const;

private:
    void Build();
    void Browse();
    SQdDeInfo::EQdDeMode Mode() const;
    CString Office() const;
    /// Another office offers other specialties and libraries; one that cannot be read is not taken.
    void TakeOffice();
    void ShowChoice();
    void ShowQuotaLibraries();

    ReadOffice m_read;
    embedded::ProjectChoice m_choice;
    QLineEdit* m_folder;
    QComboBox* m_office;
    QComboBox* m_mode;
    QComboBox* m_spec;
    QComboBox* m_billLibrary;
    QComboBox* m_quotaLibrary;
    QPushButton* m_create;
};

} // namespace editor
