#pragma once

#include "embedded/data/history/History.h"

#include <QtWidgets/QDialog>

class QCheckBox;
class QComboBox;
class QPushButton;
class QTreeWidget;

namespace editor {

class DifferenceView;
class Project;

/// The window over a project's history: lists the dated copies of a rule file, shows what differs between a
/// copy and the file as it is now, rule by rule or as XML, and restores a copy. Restoring keeps the replaced
/// state in the history.
class HistoryWindow : public QDialog
{
public:
    /// `project` must be the host and outlive this; `ruleFile` is the path text of the file that is shown
    /// first.
    HistoryWindow(QWidget* parent, Project& project, const CString& ruleFile);

    /// Whether a copy was restored.
    bool HasRestored() const { return m_restored; }

private:
    void Build();
    void FillFiles(const CString& ruleFile);
    void FillCopies();
    void ShowDifference();
    void Restore();
    const embedded::HistoryEntry* Selected() const;

    Project& m_project;
    embedded::History m_history;
    CArray<embedded::HistoryEntry> m_copies;
    QComboBox* m_files;
    QTreeWidget* m_list;
    DifferenceView* m_difference;
    QCheckBox* m_asXml;
    QPushButton* m_restore;
    bool m_restored = false;
};

} // namespace editor
