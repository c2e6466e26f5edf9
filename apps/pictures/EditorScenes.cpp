#include "EditorScenes.h"

#include "editor/dialogs/HistoryWindow.h"
#include "editor/dialogs/LibraryRepair.h"
#include "editor/dialogs/NewProjectDialog.h"
#include "editor/dialogs/TransferDialog.h"
#include "editor/dialogs/WizardDialog.h"
#include "editor/messages/Boxes.h"
#include "editor/steps/ProgressWindow.h"
#include "editor/window/MainWindow.h"
#include "embedded/data/history/History.h"
#include "embedded/data/project/ProjectFolder.h"
#include "platform/Files.h"
#include "platform/Paths.h"

#include <QtWidgets/QComboBox>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QMessageBox>

using namespace Qt::StringLiterals;

namespace {

/// The sample project, and as many others as are remembered at most, some of which have vanished.
editor::RecentProjects ManyRecent(const SampleOnShow& sample)
{
    editor::RecentProjects recent(sample.SettingsFile());
    for (int i = 1; i < editor::RecentProjects::Longest; ++i)
        recent.Add(u"/home/user/projects/2024/plumbing-and-drainage/building-%1"_s.arg(i));
    recent.Add(
        u"/home/user/一个名称很长很长很长很长很长很长很长很长很长的文件夹/再下一级的文件夹/某住宅小区三期给排水工程"_s);
    recent.Add(sample.Folder());
    return recent;
}

std::unique_ptr<editor::MainWindow> MakeWindow(const SampleOnShow& sample, bool opened)
{
    auto window = std::make_unique<editor::MainWindow>(ManyRecent(sample));
    if (opened) window->OpenProject(sample.Folder());
    return window;
}

/// Rule files that cannot be worked on, with every state that a file can have.
std::unique_ptr<QWidget> MakeUnsafeFiles(SampleOnShow& sample)
{
    const auto write = [&](const CString& name, const QByteArray& bytes) {
        platform::Files().WriteInPlace(sample.Project().RuleFolder() + u'\\' + name, bytes);
    };
    write(u"foreign.xml"_s, "<other/>");
    write(u"damaged-by-hand.xml"_s, "<a>\n  <b x=\"1\" x=\"2\"/>\n</a>");
    auto window = MakeWindow(sample, true);
    platform::Files().Remove(sample.Project().RuleFolder() + u"\\foreign.xml"_s);
    platform::Files().Remove(sample.Project().RuleFolder() + u"\\damaged-by-hand.xml"_s);
    return window;
}

template <typename Window>
std::unique_ptr<QWidget> Smallest(std::unique_ptr<Window> window)
{
    window->resize(window->minimumSizeHint());
    return window;
}

/// Opens the menu of that number.
void OpenMenu(QWidget& window, int number)
{
    QMenuBar& bar = *static_cast<editor::MainWindow&>(window).menuBar();
    QAction* action = bar.actions()[number];
    action->menu()->popup(bar.mapToGlobal(bar.actionGeometry(action).bottomLeft()));
}

void OpenRecent(QWidget& window)
{
    static_cast<editor::MainWindow&>(window).Commands().recentProjects->popup(
        window.mapToGlobal(QPoint(40, 60)));
}

/// Opens the list of the combo box of that number.
void OpenList(QWidget& window, int number)
{
    window.findChildren<QComboBox*>()[number]->showPopup();
}

std::unique_ptr<QWidget> MakeWizardStart(SampleOnShow& sample)
{
    editor::Project& project = sample.Project();
    const editor::WizardStart start{project.CurrentRuleFile(), project.BillLibrary(), project.QuotaLibrary(),
                                    u"请核对管径。\n镀锌钢管改用钢塑复合管。"_s, true};
    return std::make_unique<editor::WizardDialog>(nullptr, start, project.RuleFiles());
}

std::unique_ptr<QWidget> MakeExport(SampleOnShow& sample)
{
    auto dialog = std::make_unique<editor::TransferDialog>(nullptr, editor::TransferDialog::Direction::Export,
                                                           sample.Project());
    dialog->findChild<QComboBox*>()->setCurrentIndex(3);
    return dialog;
}

std::unique_ptr<QWidget> MakeReport(bool stored)
{
    embedded::ImportReport report;
    report.stored = stored;
    report.library = {u"GB50856-2013"_s, u"通用安装工程工程量计算规范"_s, u"全国"_s, u"2013"_s};
    report.rows = 1420;
    report.added = 1380;
    report.changed = 40;
    for (int line = 2; line < 40 && !stored; ++line)
        report.refused.append({line, u"编号“%1”不是 9 位数字"_s.arg(line)});
    return editor::MakeImportReport(nullptr, report);
}

std::unique_ptr<editor::HistoryWindow> MakeHistory(SampleOnShow& sample)
{
    const CString file = sample.Project().CurrentRuleFile();
    embedded::History(embedded::ProjectFolder(sample.Folder())).Keep(file);
    return std::make_unique<editor::HistoryWindow>(nullptr, sample.Project(), file);
}

std::unique_ptr<QWidget> MakeRepair(SampleOnShow& sample)
{
    using embedded::LibraryRole;
    const auto libraries = [&](LibraryRole role) { return sample.Project().Libraries(role); };
    return std::make_unique<editor::LibraryRepairDialog>(
        nullptr, u"/home/user/示例工程"_s,
        editor::LibraryChoices{{LibraryRole::Bill, libraries(LibraryRole::Bill)},
                               {LibraryRole::QuotaOfBills, libraries(LibraryRole::QuotaOfBills)}});
}

/// The window while another program holds a rule file.
std::unique_ptr<QWidget> MakeWait(SampleOnShow& sample)
{
    struct Wait
    {
        editor::StepControl control;
    };
    struct Window : Wait, editor::ProgressWindow
    {
        Window() : ProgressWindow(nullptr, u"正在等待规则文件…"_s, control) {}
    };
    auto window = std::make_unique<Window>();
    window->Explain(u"%1 正由ktqdde（进程 4711，机器 pc）使用，等它放开……"_s.arg(
        platform::ToNative(sample.Project().CurrentRuleFile())));
    return window;
}

std::vector<Scene> MenuScenes(SampleOnShow& sample)
{
    std::vector<Scene> scenes;
    for (int number = 0; number < 4; ++number)
        scenes.push_back({u"editor-menu-%1"_s.arg(number + 1), [&sample] { return MakeWindow(sample, true); },
                          [number](QWidget& window) { OpenMenu(window, number); }});
    scenes.push_back({u"editor-menu-recent"_s, [&sample] { return MakeWindow(sample, true); }, &OpenRecent});
    return scenes;
}

std::vector<Scene> WindowScenes(SampleOnShow& sample)
{
    const auto wizard = [&sample] { return MakeWizardStart(sample); };
    const auto history = [&sample] { return MakeHistory(sample); };
    return {
        {u"editor-start-recent"_s, [&sample] { return MakeWindow(sample, false); }},
        {u"editor-start-smallest"_s, [&sample] { return Smallest(MakeWindow(sample, false)); }},
        {u"editor-smallest"_s, [&sample] { return Smallest(MakeWindow(sample, true)); }},
        {u"editor-unsafe-files"_s, [&sample] { return MakeUnsafeFiles(sample); }},
        {u"editor-library-list"_s, [&sample] { return MakeWindow(sample, true); },
         [](QWidget& window) { OpenList(window, 2); }},
        {u"new-project-library-list"_s,
         [] { return std::make_unique<editor::NewProjectDialog>(nullptr, u"/home/user/新工程"_s); },
         [](QWidget& window) { OpenList(window, 2); }},
        {u"wizard-start"_s, wizard},
        {u"wizard-start-list"_s, wizard, [](QWidget& window) { OpenList(window, 0); }},
        {u"history-smallest"_s, [history] { return Smallest(history()); }},
        {u"export"_s, [&sample] { return MakeExport(sample); }},
        {u"export-list"_s, [&sample] { return MakeExport(sample); },
         [](QWidget& window) { OpenList(window, 0); }},
        {u"import-report"_s, [] { return MakeReport(true); }},
        {u"import-report-refused"_s, [] { return MakeReport(false); }},
        {u"waiting"_s, [&sample] { return MakeWait(sample); }},
        {u"library-repair"_s, [&sample] { return MakeRepair(sample); }},
    };
}

std::vector<Scene> BoxScenes(SampleOnShow& sample)
{
    const CString file = platform::ToNative(sample.Project().CurrentRuleFile());
    return {
        {u"box-head-target"_s, [file] { return editor::MakeHeadTargetBox(nullptr, file); }},
        {u"box-open-anyway"_s,
         [file] {
             return editor::MakeOpenAnywayBox(nullptr, file,
                                              u"读不了：第 2 行第 12 列，同一元素中属性重复"_s);
         }},
    };
}

} // namespace

std::vector<Scene> EditorScenes(SampleOnShow& sample)
{
    std::vector<Scene> scenes;
    for (const auto& more : {WindowScenes(sample), MenuScenes(sample), BoxScenes(sample)})
        scenes.insert(scenes.end(), more.begin(), more.end());
    return scenes;
}
