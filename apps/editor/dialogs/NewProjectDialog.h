#pragma once

#include "embedded/data/host/CreateProject.h"
#include "embedded/data/host/EmbeddedHost.h"

#include <QtWidgets/QDialog>

class QComboBox;
class QLineEdit;
class QPushButton;

namespace editor {

/// Asks for what a new project needs: a folder, its mode, its specialty and its libraries. Creates nothing.
class NewProjectDialog : public QDialog
{
public:
    /// `folder` is proposed.
    NewProjectDialog(QWidget* parent, const QString& folder, const CStringArray& specs);

    /// After the dialog was accepted: the folder, native, and the options.
    QString Folder() const;
    embedded::ProjectOptions Options() const;

private:
    void Build();
    void Browse();
    SQdDeInfo::EQdDeMode Mode() const;
    void ShowQuotaLibraries();

    QLineEdit* m_folder;
    QComboBox* m_mode;
    QComboBox* m_spec;
    QComboBox* m_billLibrary;
    QComboBox* m_quotaLibrary;
    QPushButton* m_create;
};

} // namespace editor
