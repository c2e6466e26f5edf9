#include "bench/ApplyFigures.h"
#include "bench/CheckFigures.h"
#include "bench/CompareFigures.h"
#include "bench/DialogFigures.h"
#include "bench/Figures.h"
#include "bench/MatchFigures.h"
#include "bench/OfficeFigures.h"
#include "bench/RuleFileGenerator.h"
#include "bench/WorkbenchFigures.h"
#include "embedded/data/host/CreateProject.h"
#include "embedded/data/host/EmbeddedHost.h"
#include "embedded/windows/EmbeddedWindows.h"
#include "platform/Files.h"
#include "platform/Paths.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QTemporaryDir>
#include <QtWidgets/QApplication>

#include <cstdio>
#include <exception>
#include <functional>
#include <string_view>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype SmallSize = 9'400'000;
constexpr qsizetype LargeSize = 10 * SmallSize;
/// How much worse than the small file's the ratio of the large one may be.
constexpr double Growth = 1.2;
const QString Project = u"project"_s;

bench::Input Write(const QTemporaryDir& folder, const QString& name, qsizetype size)
{
    const QString native = folder.filePath(name);
    const bench::Input input{native.toUtf8(), platform::FromNative(native), u"电气"_s};
    platform::Files().WriteInPlace(input.path, bench::GenerateRuleFile(size));
    return input;
}

bool RunStoreFigures(const QTemporaryDir& folder)
{
    const bench::Input small = Write(folder, u"small.xml"_s, SmallSize);
    const bench::Input large = Write(folder, u"large.xml"_s, LargeSize);
    double open = 0;
    double save = 0;
    double ignored = 0;
    const QString program = QCoreApplication::applicationFilePath();
    bool met = bench::Open("open", small, 15, 2.5, open);
    met = bench::OpenVersusDom(small, 7, program) && met;
    met = bench::Save("save", small, 15, 1.0, save) && met;
    met = bench::Open("open_large", large, 3, open * Growth, ignored) && met;
    met = bench::Save("save_large", large, 3, save * Growth, ignored) && met;
    met = bench::OpenMemory(large, program) && met;
    return bench::Resolve(small, 7) && met;
}

bool RunCompareFigure(const QTemporaryDir& folder)
{
    return bench::Compare(Write(folder, u"compare.xml"_s, SmallSize), 9);
}

bool RunMatchFigures()
{
    bool met = bench::Match(5);
    met = bench::MatchGrowth(9) && met;
    return bench::ApplySql(5) && met;
}

bool RunCheckFigures(const QTemporaryDir& folder)
{
    const bool met = bench::Check(folder.path(), folder.filePath(Project), 9);
    return bench::CheckSample(folder.path(), folder.filePath(Project), 31) && met;
}

bool RunApplyFigures(const QTemporaryDir& folder)
{
    const bool met = bench::Apply(folder.path(), 5);
    return bench::ApplyMemory(folder.path(), QCoreApplication::applicationFilePath()) && met;
}

bool RunOfficeFigures()
{
    const QTemporaryDir folder;
    bool met = bench::OfficeOpen(folder.path(), 31);
    met = bench::OfficeSearch(folder.path(), 60) && met;
    return bench::OfficePublish(folder.path(), QCoreApplication::applicationFilePath()) && met;
}

bool RunWindowFigures(const QTemporaryDir& folder)
{
    bool met = bench::CategoryChange(folder.filePath(u"change.xml"_s), 31);
    met = bench::AddCondition(folder.filePath(u"add.xml"_s), 31) && met;
    met = bench::Start(QCoreApplication::applicationFilePath(), folder.filePath(Project), 15) && met;
    met = bench::Still(Write(folder, u"large.xml"_s, LargeSize).path, 3) && met;
    return bench::Search(60) && met;
}

/// With the embedded host on a project, with its windows.
int WithHost(const QString& project, const std::function<int()>& work)
{
    embedded::EmbeddedHost host(project);
    embedded::EmbeddedWindows windows(host);
    host::Roles roles = host.Roles();
    roles.windows = &windows;
    const host::Installation installed = host::Install(roles);
    return work();
}

/// The same on a new project in a folder that goes with it.
int WithNewProject(const std::function<int(const QTemporaryDir&)>& work)
{
    const QTemporaryDir folder;
    embedded::CreateProject(folder.filePath(Project), {});
    return WithHost(folder.filePath(Project), [&] { return work(folder); });
}

/// As the editor opens projects, one after another.
bool RunWorkbenchFigures()
{
    const auto onNewProject = [](bool (*figure)(const QString&, int), int rounds) {
        const QTemporaryDir folder;
        embedded::CreateProject(folder.filePath(Project), {});
        return figure(folder.filePath(Project), rounds);
    };
    bool met = onNewProject(&bench::WorkbenchOpen, 9);
    met = onNewProject(&bench::WorkbenchFilter, 60) && met;
    return onNewProject(&bench::WorkbenchEdit, 15) && met;
}

/// A process of its own for one piece of work.
int RunChild(int& argc, char** argv)
{
    const std::string_view work = argv[2];
    if (work == "start-dialog") {
        const QApplication application(argc, argv);
        return WithHost(QCoreApplication::arguments().value(3), [] {
            bench::ShowConfigDialog();
            return 1;
        });
    }
    if (work == "start-bare") {
        const QApplication application(argc, argv);
        bench::ShowBareDialog();
        return 1;
    }
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const QString native = arguments.value(3);
    if (work == "office-publish") return bench::RunOfficeChild(arguments.mid(3));
    if (work == "peak-apply") return bench::RunApplyChild(native);
    const bench::Input input{native.toUtf8(), platform::FromNative(native), arguments.value(4)};
    return WithNewProject([&](const QTemporaryDir&) { return bench::RunChild(arguments.value(2), input); });
}

} // namespace

int main(int argc, char** argv)
{
    try {
        if (argc > 3 && std::string_view(argv[1]) == "--child") return RunChild(argc, argv);
        const QApplication application(argc, argv);
        const QStringList arguments = QCoreApplication::arguments();
        const QString only = arguments.value(1);
        bool met = true;
        if (only.isEmpty() || only == u"workbench") met = RunWorkbenchFigures();
        if (only == u"workbench") return met ? 0 : 1;
        return WithNewProject([&](const QTemporaryDir& folder) {
            if (arguments.value(1) == u"--generate"_s) {
                platform::Files().WriteInPlace(platform::FromNative(arguments.value(2)),
                                               bench::GenerateRuleFile(SmallSize));
                return 0;
            }
            const auto isWanted = [&](const QString& part) { return only.isEmpty() || only == part; };
            met = (!isWanted(u"stores"_s) || RunStoreFigures(folder)) && met;
            met = (!isWanted(u"compare"_s) || RunCompareFigure(folder)) && met;
            met = (!isWanted(u"match"_s) || RunMatchFigures()) && met;
            met = (!isWanted(u"check"_s) || RunCheckFigures(folder)) && met;
            met = (!isWanted(u"apply"_s) || RunApplyFigures(folder)) && met;
            met = (!isWanted(u"office"_s) || RunOfficeFigures()) && met;
            met = (!isWanted(u"windows"_s) || RunWindowFigures(folder)) && met;
            return met ? 0 : 1;
        });
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
