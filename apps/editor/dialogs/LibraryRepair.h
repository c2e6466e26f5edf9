#pragma once

#include "embedded/data/host/LibraryChoice.h"

#include <QtWidgets/QDialog>

#include <map>
#include <memory>

class QComboBox;

namespace editor {

class Project;

/// The libraries that can take the place of a missing one, by the role that it had in the project. A project
/// lacks a library when its data have been replaced by others.
using LibraryChoices = std::map<embedded::LibraryRole, CArray<embedded::LibraryName>>;

/// What a project lacks. Raises `embedded::Error`.
LibraryChoices MissingLibraries(const QString& nativeProject);

/// Asks which libraries a project is to use in the place of missing ones. Stores nothing.
class LibraryRepairDialog : public QDialog
{
public:
    LibraryRepairDialog(QWidget* parent, const QString& nativeProject, const LibraryChoices& choices);

    /// The codes of the chosen libraries, after the dialog was accepted.
    CStringArray Chosen() const;

private:
    QList<QComboBox*> m_libraries;
};

/// Opens a project. One that lacks libraries uses those that the user chooses from then on; null when he
/// chooses none. Raises `embedded::Error` for a project that cannot be opened for another reason, or for
/// which there is nothing to choose.
std::unique_ptr<Project> OpenOrMend(QWidget* parent, const QString& nativeFolder);

} // namespace editor
