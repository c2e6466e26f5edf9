#pragma once

#include "embedded/data/exchange/TableImport.h"

#include <QtWidgets/QDialog>

#include <memory>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QPushButton;

namespace editor {

class Project;

/// Asks which table of a project's catalogue is to be read from or written to which file, and of which
/// library. Transfers nothing.
class TransferDialog : public QDialog
{
public:
    enum class Direction { Import, Export };

    /// The libraries that the project uses are proposed.
    TransferDialog(QWidget* parent, Direction direction, Project& project);

    /// After the dialog was accepted.
    embedded::TableKind Kind() const;
    QString File() const;
    embedded::ImportOptions Options() const;

private:
    void Build();
    void Browse();
    void ShowLibraries(Project& project);

    Direction m_direction;
    QComboBox* m_kind;
    QComboBox* m_library;
    QLineEdit* m_file;
    QCheckBox* m_replace;
    QPushButton* m_start;
};

/// What an import did, in words: the library, the counts and the rows that became others or went, or that
/// nothing was stored and which rows were refused why.
CString DescribeImport(const embedded::ImportReport& report);

/// What to ask before an import of which a trial has told what it would do, without the question mark: the
/// first of the rows that would become others or go. Empty when none would.
CString ImportQuestion(const embedded::ImportReport& trial);

/// The box of a report, which may be long; not yet shown.
std::unique_ptr<QDialog> MakeImportReport(QWidget* parent, const embedded::ImportReport& report);

} // namespace editor
