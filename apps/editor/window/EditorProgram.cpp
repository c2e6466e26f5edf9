#include "editor/window/EditorProgram.h"

#include "dialogs/process/MessageBoxes.h"
#include "editor/project/ChosenFile.h"
#include "editor/project/Project.h"
#include "editor/project/Settings.h"
#include "editor/steps/LivelyWindows.h"
#include "editor/window/AppIcon.h"
#include "editor/window/CommandLine.h"
#include "editor/window/FocusStyle.h"
#include "editor/window/KeyNames.h"
#include "editor/window/MainWindow.h"
#include "editor/window/TypedAhead.h"
#include "host/RuleFilePlaces.h"
#include "platform/Console.h"
#include "platform/Paths.h"
#include "shared/RuleFileNames.h"
#include "shared/RuleFileState.h"

#include <QtCore/QLibraryInfo>
#include <QtCore/QTranslator>
#include <QtGui/QGuiApplication>
#include <QtWidgets/QApplication>

#include <algorithm>
#include <cstring>
#include <span>

using namespace Qt::StringLiterals;

namespace editor {

namespace {

enum ExitStatus { Done = 0, Failed = 1, WrongUsage = 2, WentBack = 3, WasCancelled = 4 };

/// Whether the words ask for a text only, which must not need a screen.
bool AsksForText(int argc, char** argv)
{
    const std::span<char*> words(argv, static_cast<std::size_t>(argc));
    return std::any_of(words.begin(), words.end(), [](const char* word) {
        return std::strcmp(word, "--help") == 0 || std::strcmp(word, "-h") == 0 ||
               std::strcmp(word, "--version") == 0;
    });
}

CommandLine ParseWords()
{
    return CommandLine::Parse(QCoreApplication::arguments().mid(1));
}

int PrintText(int& argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const CommandLine line = ParseWords();
    platform::WriteOut(line.help ? CommandLine::HelpText() : u"ktqdde-editor " KTQDDE_VERSION "\n"_s);
    return Done;
}

/// The project that the words name, or the last one; empty when there is none.
QString ProjectOf(const CommandLine& line, const RecentProjects& recent)
{
    if (!line.project.isEmpty()) return line.project;
    return line.sample ? SampleFolder() : recent.Last();
}

CString RuleFileOf(const Project& project, const QString& named)
{
    if (shared::NamesPath(named)) return PathTextOf(named);
    return host::RuleFileIn(project.RuleFolder(), named);
}

int RunWizardAlone(const CommandLine& line, const QString& folder)
{
    if (folder.isEmpty()) throw UsageError(u"没有指明工程，也没有上一次的工程"_s);
    const LivelyWindows lively;
    Project project(folder);
    project.BecomeHost(nullptr);
    ModuleSteps steps(nullptr, project);
    WizardStart start = steps.ProposedStart(RuleFileOf(project, *line.wizard));
    start.note = line.note;
    start.allowBack = line.allowBack;
    if (shared::ExamineRuleFile(start.ruleFile).kind == shared::RuleFileKind::Missing)
        throw std::runtime_error(
            u"规则文件不存在：%1"_s.arg(platform::ToNative(start.ruleFile)).toStdString());
    const WizardEnd end = steps.RunWizard(start).value_or(WizardEnd::Cancelled);
    platform::WriteOut(u"%1\n"_s.arg(static_cast<int>(end)));
    if (end == WizardEnd::Next) return Done;
    return end == WizardEnd::Back ? WentBack : WasCancelled;
}

int RunWindow(const CommandLine& line, const RecentProjects& recent, const QString& folder)
{
    MainWindow window(recent);
    window.show();
    if (line.sample)
        window.OpenSample(folder);
    else if (!folder.isEmpty())
        window.OpenProject(folder);
    return QApplication::exec();
}

int RunApplication(int& argc, char** argv)
{
    const QApplication application(argc, argv);
    ShowFocusInLists();
    const TypedAhead typedAhead;
    QApplication::setWindowIcon(AppIcon());
    QGuiApplication::setDesktopFileName(
        u"ktqdde-editor"_s); // joins the window to its entry in menus and docks
    QTranslator translator;
    if (translator.load(u"qtbase_zh_CN"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&translator);
    KeyNames keyNames;
    QCoreApplication::installTranslator(&keyNames);
    const CommandLine line = ParseWords();
    const dialogs::MessageBoxes boxes;
    const RecentProjects recent(SettingsFile());
    const QString folder = ProjectOf(line, recent);
    return line.wizard ? RunWizardAlone(line, folder) : RunWindow(line, recent, folder);
}

} // namespace

int RunProgram(int& argc, char** argv) noexcept
{
    try {
        return AsksForText(argc, argv) ? PrintText(argc, argv) : RunApplication(argc, argv);
    } catch (const UsageError& error) {
        platform::WriteErr(
            u"ktqdde-editor：%1\n说明见 ktqdde-editor --help\n"_s.arg(CString::fromUtf8(error.what())));
        return WrongUsage;
    } catch (const std::exception& error) {
        platform::WriteErr(u"ktqdde-editor：%1\n"_s.arg(CString::fromUtf8(error.what())));
        return Failed;
    }
}

} // namespace editor
