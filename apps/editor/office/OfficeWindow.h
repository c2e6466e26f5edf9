#pragma once

#include "shared/OfficeFiles.h"

#include <QtWidgets/QDialog>

#include <functional>

class QCheckBox;
class QLabel;
class QPushButton;
class QTreeWidget;

namespace editor {

class DifferenceView;
class Project;

/// Gives whom to ask when the states of a configuration's file cannot be merged without answers.
using AskConflicts = std::function<shared::AnswerConflicts(const CString& configuration)>;

/// The window over what an office has published: the configurations with their last version and how the
/// project's files stand to them, the versions of each, and what a version differs in from the file. Fetches
/// into the project's files and publishes them; nothing is replaced unseen, see `shared::OfficeFiles`. While
/// the office cannot be reached it shows what the project has, and what is published waits.
class OfficeWindow : public QDialog
{
public:
    /// `project` must be the host, have an office and outlive this.
    OfficeWindow(QWidget* parent, Project& project, AskConflicts ask);
    ~OfficeWindow() override;

    /// Whether a file of the project, or which one is current, may have become another one.
    bool HasChangedFiles() const { return m_hasChanged; }

private:
    void Build();
    QWidget* MakeLists();
    QWidget* MakeFoot();
    void Connect();

    /// Asks the office anew; `isFirst` also sends what waits.
    void Refresh(bool isFirst);
    void ShowOffice();
    void FillConfigurations();
    void FillVersions();
    void ShowDifference();
    void EnableButtons();

    void Fetch();
    void Publish();
    void Restore();
    void Withdraw();
    void RemoveOrBringBack();
    void TakeFetched(const shared::FetchEnd& end, const CString& configuration);
    void TakePublished(const shared::PublishEnd& end);
    /// What was done, below the lists; what was not, in a box.
    void Report(const CString& text, bool isDone);
    /// The same of a publication; one that was not done tells what it has brought into the file all the same.
    void Report(const CString& text, const shared::PublishEnd& end);

    /// Runs what asks the office; a connection that breaks shows the window as without the office.
    void Ask(const std::function<void()>& step);
    /// Anew for each step, since a wait for another program shows a window of its own.
    shared::OfficeFiles Files();
    const shared::OfficeEntry* Entry() const;
    const embedded::PublishedVersion* Version() const;
    CString OfficeName();

    Project& m_project;
    AskConflicts m_ask;
    embedded::ProjectOffice& m_place;
    CArray<shared::OfficeEntry> m_entries;
    CArray<embedded::PublishedVersion> m_versions;
    embedded::OfficeRight m_right = embedded::OfficeRight::None;
    bool m_hasChanged = false;

    QLabel* m_office;
    QLabel* m_fault;
    QLabel* m_status;
    QTreeWidget* m_list;
    QTreeWidget* m_versionList;
    DifferenceView* m_difference;
    QCheckBox* m_asXml;
    QCheckBox* m_use;
    QPushButton* m_refresh;
    QPushButton* m_fetch;
    QPushButton* m_publish;
    QPushButton* m_restore;
    QPushButton* m_remove;
    QPushButton* m_withdraw;
};

} // namespace editor
