#pragma once

#include "editor/project/RecentProjects.h"
#include "editor/session/WorkSession.h"
#include "editor/steps/LivelyWindows.h"
#include "editor/window/Actions.h"
#include "editor/window/ModuleSteps.h"
#include "embedded/data/host/CreateProject.h"

#include <QtWidgets/QMainWindow>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

class QLabel;
class QStackedWidget;

namespace editor {

class Project;
class BillPanel;
class DetailPanel;
class DiskWatch;
class FilePanel;
class FindingsPanel;
class FindingsWatch;
class HelpTopics;
class HitsPanel;
class ManualWindow;
class OfficeMark;
class OpenMark;
class OtherPrograms;
class ProjectPanel;
class TakeoffHits;
class Tour;
class TrialPanel;
class Workbench;
enum class FileCommand;
struct OtherFile;
struct RuleRow;
class WelcomePage;

/// The host window: opens a project, shows its settings and rule files, and starts the module on them. What a
/// command raises is shown in a box; the window and the project stay. Its sources: MainWindow.cpp holds the
/// window itself, MainWindowProjects.cpp how projects are opened and made, MainWindowRules.cpp how the rules
/// of a file come onto the workbench and back, MainWindowDocks.cpp what stands around the workbench,
/// MainWindowSteps.cpp what commands do with rule files and data, MainWindowHelp.cpp how a user gets to the
/// manual and through the tour, MainWindowOffice.cpp what goes to the project's office and comes from there.
class MainWindow : public QMainWindow
{
public:
    explicit MainWindow(RecentProjects recent);
    ~MainWindow() override;

    /// Opens the project in a folder and puts it first among the recent ones. False when it cannot be opened;
    /// that has been shown and the former project is still open. A project that uses a library which is
    /// missing is mended when the user chooses others.
    bool OpenProject(const QString& nativeFolder);
    /// The same with the sample project, which is made unless a project stands in the folder.
    bool OpenSample(const QString& nativeFolder);

    /// The open project; null when there is none.
    Project* OpenedProject() const { return m_project.get(); }
    const Actions& Commands() const { return m_actions; }
    /// What the workbench works on.
    WorkSession& Session() noexcept { return m_session; }
    Workbench& Bench() noexcept { return *m_workbench; }

protected:
    /// Refused while a command is being worked on, and when the user does not want to leave unsaved rules.
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    // Frame (MainWindow.cpp)
    void Connect();
    /// Lets a command run a step of this window, guarded and alone.
    void On(QAction* action, void (MainWindow::*step)());
    /// Runs a step unless another is on its way. A step may bring up modal windows, but those keep only the
    /// user's mouse and keys from this window: a desktop's own menu or an aid for the disabled reaches a
    /// command all the same, which could end the project under the first step. False when the step did not
    /// run or raised something, which has been shown.
    bool RunAlone(const std::function<void()>& step);
    void ShowState();
    void ShowRecent();
    void EnableActions();
    /// Follows what other programs have done to the rule files, as soon as nobody is in the middle of
    /// something.
    void FollowNews();
    void Tell(const QString& text);
    void About();

    // Projects (MainWindowProjects.cpp)
    void NewProject();
    /// False when the user has cancelled it.
    bool MakeProject(const QString& folder, const embedded::ProjectOptions& options);
    void ChooseProject();
    /// False when the project cannot be opened as it is and the user leaves it so.
    bool Open(const QString& nativeFolder);
    void CloseProject();
    /// What goes with the open project, and has to end before it.
    void EnterProject();
    void LeaveProject();
    void SetMode(SQdDeInfo::EQdDeMode mode);
    void SetSpec(const CString& name);
    void SetLibrary(embedded::LibraryRole role, const CString& code);

    // Rules (MainWindowRules.cpp)
    Workbench* MakeWorkbench();
    /// Opens a rule file on the workbench, or shows there why it cannot be. Offers what a program that ended
    /// in the middle has left of it, and to mend a file in which a specialty stands twice.
    void OpenRules(const CString& ruleFile);
    /// The same without that last question, for what was not opened by the user's wish or was asked already.
    void ReopenRules(const CString& ruleFile);
    /// The same where the user may want to save what is open first; false when he stays with that.
    bool SwitchRules(const CString& ruleFile);
    /// Brings onto the workbench what a step has written, or made the current configuration instead of
    /// `formerCurrent`. Whether the open file was taken over as it is now.
    bool FollowFiles(const CString& formerCurrent);
    /// False when the user did not save after all.
    bool SaveRules();
    /// Asks what is to become of changes that are not saved; false when the user stays with them.
    bool MayLeaveRules();
    void OfferLostDraft(const CString& ruleFile);
    /// The same of rule files that are gone, for which nobody would ask.
    void OfferDraftsWithoutFile();
    void RestoreRules(const LostDraft& lost);
    void Recover(const LostDraft& lost);
    void GoToFile(const RuleRow& found);
    std::vector<OtherFile> ReadOtherFiles();
    void TakeSpecialty();
    void ShowTitle();
    void TellJournalFault();
    /// What other programs have done to the rule files.
    void FollowDisk(const QStringList& changed);

    // Docks (MainWindowDocks.cpp)
    ProjectPanel* MakeProjectPanel();
    void MakeDocks();
    void ConnectDocks();
    void MakeMenus();
    void RestoreLayout();
    void StoreLayout() const;
    void RunFileCommand(FileCommand command, const CString& path);
    void TakeInFiles(const QStringList& files);
    void ShowOtherPrograms(const std::optional<CString>& others);

    // Office (MainWindowOffice.cpp)
    /// The window over the project's office, and what follows from what was done there.
    void ShowOffice();
    /// The same from within a dialog of the module, which reads its configuration anew afterwards.
    void RunOfficeWindow(QWidget* parent, bool& hasChanged);

    // Help (MainWindowHelp.cpp)
    void MakeHelp();
    void StartTour(bool isOffer);

    // Rule files and data (MainWindowSteps.cpp)
    void ExamineRuleFiles();
    /// Runs what may write rule files, and examines them afterwards unless it was cancelled: also when it
    /// raises, for it may have written some by then.
    StepEnd RunAndExamine(const std::function<StepEnd()>& step);
    void Configure();
    void RunWizard();
    void Refresh();
    void RefreshOther();
    void MakeCurrent(const CString& ruleFile);
    /// Says which file is current instead.
    void WarnUnlessCurrent(const CString& ruleFile);
    void RebuildAttributes();
    void WriteHead();
    void ShowHistory();
    void ImportData();
    void ExportData();
    ModuleSteps Steps();
    void TellEnd(StepEnd end, const QString& done);

    LivelyWindows m_lively;
    RecentProjects m_recent;
    Actions m_actions;
    std::unique_ptr<Project> m_project;
    WorkSession m_session; ///< ends before the project
    QStackedWidget* m_pages;
    WelcomePage* m_welcome;
    FilePanel* m_files;
    ProjectPanel* m_panel;
    Workbench* m_workbench;
    DetailPanel* m_details = nullptr;
    FindingsWatch* m_findings = nullptr;
    FindingsPanel* m_findingsPanel = nullptr;
    TrialPanel* m_trial = nullptr;
    TakeoffHits* m_hits = nullptr;
    HitsPanel* m_hitsPanel = nullptr;
    BillPanel* m_bill = nullptr;
    QLabel* m_others; ///< who else has the project open
    OfficeMark* m_office;
    std::unique_ptr<OpenMark> m_openMark;
    std::unique_ptr<OtherPrograms> m_otherPrograms;
    std::unique_ptr<DiskWatch> m_disk;
    QStringList m_diskNews; ///< path texts that wait until no command is being worked on
    std::unique_ptr<ManualWindow> m_manual;
    std::unique_ptr<HelpTopics> m_help;
    Tour* m_tour = nullptr;
    bool m_isBusy = false; ///< a command is being worked on
};

} // namespace editor
