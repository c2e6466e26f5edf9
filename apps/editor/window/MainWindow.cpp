#include "editor/window/MainWindow.h"

#include "editor/files/DiskWatch.h"
#include "editor/files/FilePanel.h"
#include "editor/files/OpenMark.h"
#include "editor/files/OtherPrograms.h"
#include "editor/help/HelpTopics.h"
#include "editor/help/ManualWindow.h"
#include "editor/messages/Boxes.h"
#include "editor/messages/ErrorBox.h"
#include "editor/office/OfficeMark.h"
#include "editor/project/Project.h"
#include "editor/project/Settings.h"
#include "editor/window/AppIcon.h"
#include "editor/window/ProjectPanel.h"
#include "editor/window/WelcomePage.h"
#include "editor/workbench/Workbench.h"
#include "shared/RuleFileState.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QMimeData>
#include <QtCore/QScopedValueRollback>
#include <QtCore/QTimer>
#include <QtGui/QAction>
#include <QtGui/QCloseEvent>
#include <QtGui/QDragEnterEvent>
#include <QtGui/QDropEvent>
#include <QtGui/QScreen>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QStatusBar>

#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

/// Until somebody looks again whether a modal window is still open, in milliseconds.
constexpr int NewsPause = 300;
constexpr QSize FirstSize(1600, 900);
/// What a frame takes at most, so that all of the window is seen on a small screen, too.
constexpr QSize FrameRoom(16, 48);

/// The project folder that is dragged onto the window: a folder itself, or a project file in it. Empty for
/// anything else.
QString DraggedFolder(const QMimeData& data)
{
    if (data.urls().size() != 1 || !data.urls().first().isLocalFile()) return {};
    const QFileInfo file(data.urls().first().toLocalFile());
    if (file.isDir()) return file.absoluteFilePath();
    return file.suffix() == u"ktqd" ? file.absolutePath() : QString();
}

} // namespace

MainWindow::MainWindow(RecentProjects recent)
    : m_recent(std::move(recent)), m_actions(*this), m_pages(new QStackedWidget), m_others(new QLabel),
      m_office(new OfficeMark)
{
    setAcceptDrops(true);
    resize(FirstSize.boundedTo(screen()->availableSize() - FrameRoom));
    m_welcome = new WelcomePage(m_actions, [this](const QString& folder) { OpenProject(folder); });
    m_panel = MakeProjectPanel();
    m_workbench = MakeWorkbench();
    MakeDocks();
    MakeMenus();
    MakeHelp();
    m_pages->addWidget(m_welcome);
    m_pages->addWidget(m_workbench);
    setCentralWidget(m_pages);
    Connect();
    RestoreLayout();
    Tell(u"准备好了"_s);
    ShowState();
}

MainWindow::~MainWindow()
{
    m_office->Follow(nullptr); // goes after the project
}

void MainWindow::Connect()
{
    On(m_actions.newProject, &MainWindow::NewProject);
    On(m_actions.openProject, &MainWindow::ChooseProject);
    connect(m_actions.sampleProject, &QAction::triggered, this, [this] { OpenSample(SampleFolder()); });
    On(m_actions.closeProject, &MainWindow::CloseProject);
    connect(m_actions.quit, &QAction::triggered, this, [this] { close(); });
    connect(m_actions.recentProjects, &QMenu::aboutToShow, this, [this] { ShowRecent(); });
    On(m_actions.configure, &MainWindow::Configure);
    On(m_actions.wizard, &MainWindow::RunWizard);
    On(m_actions.refresh, &MainWindow::Refresh);
    On(m_actions.refreshOther, &MainWindow::RefreshOther);
    On(m_actions.attributes, &MainWindow::RebuildAttributes);
    On(m_actions.writeHead, &MainWindow::WriteHead);
    On(m_actions.history, &MainWindow::ShowHistory);
    On(m_actions.examine, &MainWindow::ExamineRuleFiles);
    On(m_actions.importData, &MainWindow::ImportData);
    On(m_actions.exportData, &MainWindow::ExportData);
    On(m_actions.office, &MainWindow::ShowOffice);
    On(m_actions.about, &MainWindow::About);
}

void MainWindow::On(QAction* action, void (MainWindow::*step)())
{
    connect(action, &QAction::triggered, this, [this, step] { RunAlone([&] { (this->*step)(); }); });
}

bool MainWindow::RunAlone(const std::function<void()>& step)
{
    if (m_isBusy) return false;
    bool done = false;
    {
        const QScopedValueRollback<bool> busy(m_isBusy, true);
        done = RunGuarded(step);
    }
    FollowNews();
    return done;
}

void MainWindow::FollowNews()
{
    if (m_diskNews.isEmpty() || m_isBusy || !m_project) return;
    if (QApplication::activeModalWidget() != nullptr) {
        // Whatever that asks is about the rules as they stand.
        QTimer::singleShot(NewsPause, this, [this] { FollowNews(); });
        return;
    }
    const QStringList news = std::exchange(m_diskNews, {});
    RunAlone([&] { FollowDisk(news); });
}

void MainWindow::ShowState()
{
    ShowTitle();
    if (m_project) {
        m_panel->ShowProject(*m_project);
        m_pages->setCurrentWidget(m_workbench);
    } else {
        m_pages->setCurrentWidget(m_welcome);
    }
    ShowRecent();
    EnableActions();
}

void MainWindow::ShowRecent()
{
    const QList<RecentProjects::Entry> entries = m_recent.Entries();
    m_welcome->ShowRecent(entries);
    QMenu& menu = *m_actions.recentProjects;
    menu.clear();
    bool vanished = false;
    for (const RecentProjects::Entry& entry : entries) {
        // An ampersand in a path is no mnemonic.
        QAction* action = menu.addAction(RecentText(entry).replace(u'&', u"&&"_s));
        action->setEnabled(entry.exists);
        vanished = vanished || !entry.exists;
        connect(action, &QAction::triggered, this, [this, folder = entry.folder] { OpenProject(folder); });
    }
    menu.setEnabled(!entries.isEmpty());
    if (!vanished) return;
    menu.addSeparator();
    connect(menu.addAction(u"清除已不在的工程(&V)"_s), &QAction::triggered, this, [this] {
        m_recent.RemoveVanished();
        ShowRecent();
    });
}

void MainWindow::EnableActions()
{
    const auto file = m_project ? m_files->Selected() : std::nullopt;
    m_actions.Enable({.project = m_project != nullptr,
                      .file = file.has_value(),
                      .existing = file && file->state.kind != shared::RuleFileKind::Missing,
                      .rules = file && file->state.kind == shared::RuleFileKind::Rules,
                      .office = m_project && m_project->Host().Office() != nullptr});
}

void MainWindow::Tell(const QString& text)
{
    statusBar()->showMessage(text);
}

void MainWindow::About()
{
    QMessageBox box(this);
    box.setWindowTitle(u"关于"_s);
    box.setIconPixmap(AppIcon().pixmap(64));
    box.setText(ProgramName() + u" " KTQDDE_VERSION ""_s);
    box.setInformativeText(u"维护构件自动套清单、定额的规则。\nMIT 许可。"_s);
    box.addButton(u"确定"_s, QMessageBox::AcceptRole);
    box.exec();
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    bool mayClose = false;
    // A modal window keeps only the user's mouse and keys from this one.
    if (QApplication::activeModalWidget() != nullptr) return event->ignore();
    RunAlone([&] { mayClose = MayLeaveRules(); });
    event->setAccepted(mayClose);
    if (!mayClose) return;
    StoreLayout();
    m_session.Close(); // nothing is left to be offered again
    m_manual->close();
}

void MainWindow::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() != QEvent::ActivationChange || !isActiveWindow()) return;
    if (m_otherPrograms) m_otherPrograms->Look();
    if (m_disk) m_disk->LookSoon();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    const bool isRules = m_project && !DraggedRuleFiles(*event->mimeData()).isEmpty();
    if (isRules || !DraggedFolder(*event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event)
{
    const QString folder = DraggedFolder(*event->mimeData());
    const QStringList files = m_project ? DraggedRuleFiles(*event->mimeData()) : QStringList();
    if (folder.isEmpty() && files.isEmpty()) return;
    event->acceptProposedAction();
    folder.isEmpty() ? TakeInFiles(files) : static_cast<void>(OpenProject(folder));
}

} // namespace editor
