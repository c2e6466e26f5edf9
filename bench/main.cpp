#include "bench/Figures.h"
#include "bench/RuleFileGenerator.h"
#include "embedded/data/EmbeddedHost.h"
#include "platform/Files.h"
#include "platform/Paths.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QTemporaryDir>

#include <cstdio>
#include <exception>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype SmallSize = 9'400'000;
constexpr qsizetype LargeSize = 10 * SmallSize;
/// How much worse than the small file's the ratio of the large one may be.
constexpr double Growth = 1.2;

bench::Input Write(const QTemporaryDir& folder, const QString& name, qsizetype size)
{
    const QString native = folder.filePath(name);
    const bench::Input input{native.toUtf8(), platform::FromNative(native), u"电气"_s};
    platform::Files().WriteInPlace(input.path, bench::GenerateRuleFile(size));
    return input;
}

bool RunAll(const QTemporaryDir& folder)
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
    met = bench::Resolve(small, 7) && met;
    return met;
}

/// A host on a project of its own, in a folder that goes with it.
int WithHost(const std::function<int(const QTemporaryDir&)>& work)
{
    const QTemporaryDir folder;
    const QString project = folder.filePath(u"project"_s);
    embedded::CreateProject(project, {});
    embedded::EmbeddedHost host(project);
    const host::Installation installed = host::Install(host.Roles());
    return work(folder);
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    try {
        if (arguments.value(1) == u"--child"_s) {
            const QString native = arguments.value(3);
            const bench::Input input{native.toUtf8(), platform::FromNative(native), arguments.value(4)};
            return WithHost([&](const QTemporaryDir&) { return bench::RunChild(arguments.value(2), input); });
        }
        if (arguments.value(1) == u"--generate"_s) {
            return WithHost([&](const QTemporaryDir&) {
                platform::Files().WriteInPlace(platform::FromNative(arguments.value(2)),
                                               bench::GenerateRuleFile(SmallSize));
                return 0;
            });
        }
        return WithHost([](const QTemporaryDir& folder) { return RunAll(folder) ? 0 : 1; });
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
