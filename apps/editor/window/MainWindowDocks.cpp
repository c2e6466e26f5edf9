#include "editor/docks/details/DetailPanel.h"
#include "editor/docks/details/SeriesDialog.h"
#include "editor/docks/findings/FindingsPanel.h"
#include "editor/docks/findings/FindingsWatch.h"
#include "editor/docks/takeoff/BillPanel.h"
#include "editor/docks/takeoff/HitsPanel.h"
#include "editor/docks/takeoff/TakeoffHits.h"
#include "editor/docks/trial/TrialPanel.h"
#include "editor/files/FileCommands.h"
#include "editor/files/FilePanel.h"
#include "editor/office/OfficeMark.h"
#include "editor/project/Project.h"
#include "editor/project/Settings.h"
#include "editor/window/MainWindow.h"
#include "editor/window/ProjectPanel.h"
#include "editor/workbench/Workbench.h"
#include "platform/Files.h"

#include <QtCore/QSettings>
#include <QtGui/QAction>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenu>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QStatusBar>

#include <initializer_list>

using namespace Qt::StringLiterals;

// What stands around the rules on the workbench, and how its parts come together.

namespace editor {

namespace {

/// Changes when docks come or go, so that a former arrangement is not forced on them.
constexpr int LayoutVersion = 1;
/// Of the docks at first, in pixels.
constexpr int LeftWidth = 230;
constexpr int RightWidth = 390;
constexpr int BottomHeight = 230;
constexpr QLatin1StringView GeometryKey("window/geometry");
constexpr QLatin1StringView LayoutKey("window/layout");

std::optional<TrialMark> MarkOf(const TrialPanel& trial, const WorkSession& session, std::size_t position)
{
    const TrialOutcomePtr outcome = trial.Outcome();
    // The rules are of another state for the moment between an edit and the next trial.
    if (!outcome || outcome->Category() != session.Category()) return std::nullopt;
    if (outcome->Applies() == position) return TrialMark{.applies = true, .reason = {}};
    return TrialMark{.applies = false, .reason = outcome->ReasonOf(position)};
}

std::optional<RuleHits> HitsOf(const TakeoffHits& hits, const CString& category, std::size_t position)
{
    const auto count = hits.HitsOf(category, position);
    const auto all = hits.ComponentsOf(category);
    if (!count || !all) return std::nullopt;
    return RuleHits{*count, *all == 0 ? 0.0 : static_cast<double>(*count) / static_cast<double>(*all)};
}

} // namespace

ProjectPanel* MainWindow::MakeProjectPanel()
{
    m_files = new FilePanel(
        {.command = [this](FileCommand command, const CString& path) { RunFileCommand(command, path); },
         .dropped = [this](const QStringList& files) { TakeInFiles(files); },
         .selectionChanged = [this] { EnableActions(); }});
    return new ProjectPanel(
        m_files, {.setMode = [this](auto mode) { SetMode(mode); },
                  .setSpec = [this](const CString& name) { SetSpec(name); },
                  .setLibrary = [this](auto role, const CString& code) { SetLibrary(role, code); }});
}

void MainWindow::MakeDocks()
{
    m_details = new DetailPanel(m_session, [this](const auto& step) { return RunAlone(step); });
    m_findings = new FindingsWatch(m_session, this);
    m_findingsPanel = new FindingsPanel(m_session, *m_findings);
    m_hits = new TakeoffHits(m_session, this);
    m_hitsPanel = new HitsPanel(m_session, *m_hits);
    m_trial = new TrialPanel(m_session);
    m_bill = new BillPanel(m_session, *m_hits);
    Workbench& bench = *m_workbench;
    auto* project = new QScrollArea; // its fields ask for more width than the list of categories
    project->setWidget(m_panel);
    project->setWidgetResizable(true);
    project->setFrameShape(QFrame::NoFrame);
    project->setFocusProxy(m_panel);
    bench.AddDock(u"project"_s, u"工程"_s, project, Qt::LeftDockWidgetArea);
    QDockWidget* const details = bench.AddDock(u"details"_s, u"规则"_s, m_details, Qt::RightDockWidgetArea);
    bench.AddDock(u"trial"_s, u"试套"_s, m_trial, Qt::RightDockWidgetArea);
    QDockWidget* const findings =
        bench.AddDock(u"findings"_s, u"问题"_s, m_findingsPanel, Qt::BottomDockWidgetArea);
    bench.AddDock(u"hits"_s, u"构件"_s, m_hitsPanel, Qt::BottomDockWidgetArea);
    bench.AddDock(u"bill"_s, u"清单"_s, m_bill, Qt::BottomDockWidgetArea);
    bench.FindDock(u"categories"_s)->raise();
    details->raise();
    findings->raise();
    bench.SetFirstSizes({bench.FindDock(u"categories"_s), details, findings},
                        {LeftWidth, RightWidth, BottomHeight});
    bench.SetEditor(m_details);
    ConnectDocks();
}

void MainWindow::ConnectDocks()
{
    Workbench& bench = *m_workbench;
    bench.SetKnowledge(
        {.severity = [this](const CString& category,
                            std::size_t position) { return m_findings->WorstOf(category, position); },
         .findings = [this](const CString& category,
                            std::size_t position) { return m_findings->TextOf(category, position); },
         .hits = [this](const CString& category,
                        std::size_t position) { return HitsOf(*m_hits, category, position); },
         .trial = [this](std::size_t position) { return MarkOf(*m_trial, m_session, position); }},
        [this](const CString& category) { return m_findings->WorstOf(category); });
    connect(m_findings, &FindingsWatch::FindingsChanged, this,
            [this](const QStringList& categories) { m_workbench->KnowledgeChanged(categories); });
    connect(m_trial, &TrialPanel::OutcomeChanged, this, [this] { m_workbench->KnowledgeChanged(); });
    connect(m_hits, &TakeoffHits::HitsChanged, this, [this] {
        m_workbench->ShowHits(m_hits->Figures() != nullptr);
        m_workbench->KnowledgeChanged();
    });
    m_trial->SetComponentSource([this] { return m_hitsPanel->ChosenComponent(); });
    connect(m_hitsPanel, &HitsPanel::TryWanted, this, [this](const Component& component) {
        m_workbench->FindDock(u"trial"_s)->show();
        m_workbench->FindDock(u"trial"_s)->raise();
        m_trial->Take(component);
    });
    connect(m_bill, &BillPanel::ItemWanted, this,
            [this](const QString& number) { m_workbench->Find(number, SearchScope::File); });
    connect(m_details, &DetailPanel::Told, this, [this](const CString& sentence) { Tell(sentence); });
    connect(m_workbench->Commands().series, &QAction::triggered, this, [this] {
        RunAlone([this] {
            const auto rule = m_session.CurrentRule();
            if (!rule) return;
            m_details->Commit();
            SeriesDialog dialog(m_session, m_session.CategoryText(), *rule, {}, this);
            if (dialog.exec() == QDialog::Accepted) Tell(u"已生成 %1 条规则"_s.arg(dialog.Count()));
        });
    });
}

void MainWindow::MakeMenus()
{
    const WorkbenchActions& commands = m_workbench->Commands();
    QMenu& edit = *m_actions.edit;
    edit.addActions({commands.save, commands.discard});
    edit.addSeparator();
    edit.addActions({m_workbench->UndoAction(), m_workbench->RedoAction()});
    edit.addSeparator();
    edit.addActions({commands.add, commands.remove, commands.up, commands.down});
    edit.addSeparator();
    edit.addActions({commands.copy, commands.paste, commands.copyTo, commands.series});
    edit.addSeparator();
    edit.addActions({commands.find, commands.edit});
    m_actions.view->addActions(m_workbench->DockCommands());
    m_actions.view->addSeparator();
    QMenu& shown = *m_actions.view->addMenu(u"显示的面板(&S)"_s);
    for (QDockWidget* dock : m_workbench->Docks())
        shown.addAction(dock->toggleViewAction());
    for (QLabel* label : std::initializer_list<QLabel*>{m_office, m_others}) {
        statusBar()->addPermanentWidget(label);
        label->setTextFormat(Qt::PlainText);
        label->setMinimumWidth(1); // a long one is cut, and told by its tip, before it widens the window
        label->hide();
    }
}

void MainWindow::RestoreLayout()
{
    const QSettings settings(m_recent.File(), QSettings::IniFormat);
    restoreGeometry(settings.value(GeometryKey).toByteArray());
    m_workbench->Restore(settings.value(LayoutKey).toByteArray(), LayoutVersion);
}

void MainWindow::StoreLayout() const
{
    QSettings settings(m_recent.File(), QSettings::IniFormat);
    settings.setValue(GeometryKey, saveGeometry());
    settings.setValue(LayoutKey, m_workbench->saveState(LayoutVersion));
}

void MainWindow::RunFileCommand(FileCommand command, const CString& path)
{
    if (command == FileCommand::Open) {
        RunAlone([&] { SwitchRules(path); });
        return;
    }
    if (command == FileCommand::History) {
        RunAlone([&] { ShowHistory(); });
        return;
    }
    RunAlone([&] {
        const bool isOpen = m_session.IsOpen() && m_session.File().Path() == path;
        const bool changesFile = command == FileCommand::Rename || command == FileCommand::Delete ||
                                 command == FileCommand::Unwrap || command == FileCommand::Duplicate ||
                                 command == FileCommand::Compare;
        if (isOpen && changesFile && !MayLeaveRules()) return;
        const FileEnd end = FileCommands(this, *m_project).Run(command, path);
        if (!end.done) return;
        if (command == FileCommand::Rename) DraftJournal::Follow(m_project->Folder(), path, end.path);
        ExamineRuleFiles();
        if (!end.path.isEmpty()) m_files->Select(end.path);
        const bool isGone = isOpen && !platform::Files().Exists(path);
        if (isGone)
            OpenRules(end.path.isEmpty() ? m_project->CurrentRuleFile() : end.path);
        else if (command == FileCommand::New || (command == FileCommand::Unwrap && !m_session.IsChanged()))
            SwitchRules(end.path.isEmpty() ? path : end.path);
        ShowTitle();
        Tell(end.told);
    });
}

void MainWindow::TakeInFiles(const QStringList& files)
{
    RunAlone([&] {
        const FileEnd end = FileCommands(this, *m_project).TakeIn(files);
        if (!end.done) return;
        ExamineRuleFiles();
        m_files->Select(end.path);
        Tell(end.told);
    });
}

void MainWindow::ShowOtherPrograms(const std::optional<CString>& others)
{
    m_others->setVisible(others.has_value());
    m_others->setText(others ? u"另一个程序也打开了这个工程：%1"_s.arg(*others) : QString());
    m_others->setToolTip(m_others->text());
}

} // namespace editor
