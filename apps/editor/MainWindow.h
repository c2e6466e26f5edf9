#pragma once

#include "editor/Actions.h"
#include "editor/ModuleSteps.h"
#include "editor/RecentProjects.h"

#include <QtWidgets/QMainWindow>

#include <functional>
#include <memory>

class QStackedWidget;

namespace editor {

class Project;
class ProjectPanel;
class WelcomePage;

/// The host window: opens a project, shows its settings and rule files, and starts the module on them. What a
/// command raises is shown in a box; the window and the project stay.
class MainWindow : public QMainWindow
{
public:
    explicit MainWindow(RecentProjects recent);
    ~MainWindow() override;

    /// Opens the project in a folder and puts it first among the recent ones. False when it cannot be opened;
    /// that has been shown and the former project is still open.
    bool OpenProject(const QString& nativeFolder);
    /// The same with the sample project, which is made unless a project stands in the folder.
    bool OpenSample(const QString& nativeFolder);

    /// The open project; null when there is none.
    Project* OpenedProject() const { return m_project.get(); }
    const Actions& Commands() const { return m_actions; }

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    // Frame (MainWindow.cpp)
    void Connect();
    /// Lets a command run a step of this window, guarded.
    void On(QAction* action, void (MainWindow::*step)());
    void ShowState();
    void ShowRecent();
    void EnableActions();
    void Tell(const QString& text);
    void About();

    // Projects (MainWindowProjects.cpp)
    void NewProject();
    void MakeProject(const QString& folder, const embedded::ProjectOptions& options);
    void ChooseProject();
    void Open(const QString& nativeFolder);
    void CloseProject();
    void SetMode(SQdDeInfo::EQdDeMode mode);
    void SetSpec(const CString& name);
    void SetLibrary(embedded::LibraryRole role, const CString& code);

    // Rule files and data (MainWindowSteps.cpp)
    void ExamineRuleFiles();
    void Configure();
    void RunWizard();
    void Refresh();
    void RefreshOther();
    void MakeCurrent(const CString& ruleFile);
    void RebuildAttributes();
    void WriteHead();
    void ShowHistory();
    void ImportData();
    void ExportData();
    ModuleSteps Steps();
    void TellEnd(StepEnd end, const QString& done);

    RecentProjects m_recent;
    Actions m_actions;
    std::unique_ptr<Project> m_project;
    QStackedWidget* m_pages;
    WelcomePage* m_welcome;
    ProjectPanel* m_panel;
};

} // namespace editor
