#include "editor/window/MainWindow.h"

#include "editor/dialogs/LibraryRepair.h"
#include "editor/dialogs/NewProjectDialog.h"
#include "editor/docks/takeoff/TakeoffHits.h"
#include "editor/files/DiskWatch.h"
#include "editor/files/OpenMark.h"
#include "editor/files/OtherPrograms.h"
#include "editor/messages/Boxes.h"
#include "editor/messages/ErrorBox.h"
#include "editor/office/OfficeMark.h"
#include "editor/project/Project.h"
#include "editor/project/Settings.h"
#include "editor/steps/LongStep.h"
#include "editor/window/ProjectPanel.h"
#include "editor/workbench/Workbench.h"
#include "embedded/data/engine/Service.h"
#include "embedded/data/office/Office.h"
#include "embedded/data/project/CurrentConfiguration.h"
#include "embedded/data/project/ProjectFolder.h"
#include "sample/SampleProject.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLabel>

using namespace Qt::StringLiterals;

// How projects are made, opened, closed and set.

namespace editor {

namespace {

CStringArray KnownOffices()
{
    CStringArray names;
    for (const embedded::Service& service : embedded::ReadServices())
        if (embedded::Service::NameFault(service.name).isEmpty()) names.append(service.name);
    return names;
}

std::optional<embedded::ProjectChoice> ReadOfficeChoice(QWidget* parent, const CString& office)
{
    std::optional<embedded::ProjectChoice> choice;
    RunGuarded([&] {
        RunLongStep(parent, u"正在连接办公室“%1”…"_s.arg(office), [&](StepControl&) {
            embedded::Office open(office);
            choice = embedded::ReadChoice(open.Connection());
        });
    });
    return choice;
}

QString UndoLost()
{
    return u"工程的类别变了，以前的修改不能再撤销"_s;
}

/// A folder of a new project that does not exist yet.
QString ProposedFolder()
{
    const QString base = QDir::homePath() + u"/新工程"_s;
    QString folder = base;
    for (int number = 2; QDir(folder).exists(); ++number)
        folder = base + QString::number(number);
    return folder;
}

} // namespace

bool MainWindow::OpenProject(const QString& nativeFolder)
{
    bool opened = false;
    RunAlone([&] { opened = Open(nativeFolder); });
    return opened;
}

bool MainWindow::OpenSample(const QString& nativeFolder)
{
    bool opened = false;
    RunAlone([&] {
        if (!embedded::IsProject(nativeFolder)) {
            QDir().mkpath(QFileInfo(nativeFolder).absolutePath());
            if (!MakeProject(nativeFolder, sample::SampleOptions())) return;
            sample::AddSampleRules(nativeFolder);
        }
        opened = Open(nativeFolder);
    });
    if (opened) StartTour(true);
    return opened;
}

void MainWindow::NewProject()
{
    NewProjectDialog dialog(this, ProposedFolder(), KnownOffices(),
                            [this](const CString& office) { return ReadOfficeChoice(this, office); });
    // What was refused comes back, with what the user had entered.
    for (bool refused = true; refused;) {
        if (dialog.exec() != QDialog::Accepted) return;
        refused = !RunGuarded([&] {
            // Without the attribute file all ranges would be open until somebody rebuilds it.
            if (MakeProject(dialog.Folder(), dialog.Options()) && Open(dialog.Folder()))
                Steps().RebuildAttributes();
        });
    }
}

bool MainWindow::MakeProject(const QString& folder, const embedded::ProjectOptions& options)
{
    const bool made = RunLongStep(this, u"正在新建工程…"_s, [&](StepControl& control) {
        embedded::CreateProject(folder, options, control.AsProgress());
    });
    if (!made) Tell(u"已取消新建"_s);
    return made;
}

void MainWindow::ChooseProject()
{
    const QString start = m_project ? QFileInfo(m_project->Folder()).path() : QDir::homePath();
    const QString folder = QFileDialog::getExistingDirectory(this, u"打开工程：选择工程文件夹"_s, start);
    if (!folder.isEmpty()) Open(folder);
}

bool MainWindow::Open(const QString& nativeFolder)
{
    if (!MayLeaveRules()) return false;
    auto project = OpenOrMend(this, nativeFolder);
    if (!project) return false;
    LeaveProject();
    m_project = std::move(project);
    m_project->BecomeHost(this);
    if (m_project->Host().Office() != nullptr) {
        m_project->SetNetDisk([this] {
            if (!MayLeaveRules()) return;
            bool hasChanged = false; // the module's own steps look at the files anyway
            RunOfficeWindow(QApplication::activeWindow(), hasChanged);
        });
    }
    try {
        EnterProject();
    } catch (...) {
        LeaveProject();
        ShowState();
        throw;
    }
    m_recent.Add(m_project->Folder());
    ShowState();
    m_workbench->FocusRules();
    ExamineRuleFiles();
    OpenRules(m_project->CurrentRuleFile());
    Tell(u"已打开工程 %1"_s.arg(QDir::toNativeSeparators(m_project->Folder())));
    const CString note = embedded::CurrentConfiguration(m_project->Host().ProjectPath()).CutNote();
    if (!note.isEmpty()) ShowWarning(note);
    RunGuarded([this] { OfferDraftsWithoutFile(); }); // the project is open whatever comes of them
    return true;
}

void MainWindow::EnterProject()
{
    const embedded::ProjectFolder folder(m_project->Folder());
    m_openMark = std::make_unique<OpenMark>(folder);
    m_otherPrograms = std::make_unique<OtherPrograms>(
        folder, [this](const std::optional<CString>& others) { ShowOtherPrograms(others); });
    m_disk = std::make_unique<DiskWatch>(m_project->RuleFolder(), [this](const QList<DiskChange>& changes) {
        for (const DiskChange& change : changes)
            m_diskNews.append(change.path);
        FollowNews();
    });
    m_session.SetProject(m_project.get());
    m_office->Follow(m_project->Host().Office());
}

void MainWindow::LeaveProject()
{
    m_session.SetProject(nullptr);
    m_hits->Close();
    m_disk.reset();
    m_otherPrograms.reset();
    m_openMark.reset();
    m_office->Follow(nullptr);
    m_project.reset();
    m_diskNews.clear();
    m_others->hide();
}

void MainWindow::CloseProject()
{
    if (!MayLeaveRules()) return;
    LeaveProject();
    ShowState();
    Tell(u"工程已关闭"_s);
}

// The panel shows the project's own answer also when the change was refused.
void MainWindow::SetMode(SQdDeInfo::EQdDeMode mode)
{
    bool canUndo = true;
    RunAlone([&] {
        m_project->SetMode(mode);
        canUndo = m_session.RefreshFacts();
    });
    ShowState();
    if (!canUndo) Tell(UndoLost());
}

void MainWindow::SetSpec(const CString& name)
{
    RunAlone([&] {
        m_project->SetSpec(name);
        m_session.ChooseSpecialty(name);
    });
    ShowState();
}

void MainWindow::SetLibrary(embedded::LibraryRole role, const CString& code)
{
    bool canUndo = true;
    const bool set = RunAlone([&] {
        m_project->SetLibrary(role, code);
        canUndo = m_session.RefreshFacts();
    });
    ShowState();
    if (set) Tell(u"已换库。规则中属于其他库的清单、定额不再显示，但仍留在规则文件里"_s);
    if (!canUndo) Tell(UndoLost());
}

} // namespace editor
