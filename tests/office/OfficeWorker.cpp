#include "cli/commands/rules/PipeFile.h"
#include "embedded/data/engine/Error.h"
#include "embedded/data/host/CreateProject.h"
#include "embedded/data/host/EmbeddedHost.h"
#include "platform/Files.h"
#include "shared/OfficeFiles.h"

#include <QtCore/QCoreApplication>

#include <cstdio>
#include <exception>

/// office_worker FOLDER SERVICE NAME COUNT: makes a project in FOLDER on the office, fetches its COUNT
/// configurations, and then gives each a rule for the material "NAME配置I", and publishes it. Every fourth
/// worker, by the number at the end of its NAME, also changes a rule that all of them change. Prints a line
/// for each: "published MATERIAL", or "conflict MATERIAL" when it was refused because of the rule that all
/// change. Begins to publish when a line comes on standard input.

using namespace Qt::StringLiterals;

namespace {

constexpr int Quarrel = 4;

/// The file with one rule more, and, for who quarrels, another quantity in the first rule.
QByteArray Edited(QByteArray file, const QByteArray& material, const QByteArray& formula)
{
    file.insert(file.lastIndexOf("<Config id=\"1\" bDefault"), test::PipeElement(1000, material));
    if (formula.isEmpty()) return file;
    const QByteArray field = "strFormula=\"";
    const qsizetype from = file.indexOf(field) + field.size();
    return file.replace(from, file.indexOf('"', from) - from, formula);
}

/// Whether the rule came into the last version.
bool Work(shared::OfficeFiles& files, const CString& configuration, const QByteArray& material, int worker)
{
    const CString path = files.FileOf(configuration);
    const QByteArray formula = worker % Quarrel == 0 ? "长度" + QByteArray::number(worker) : QByteArray();
    platform::Files().Replace(path,
                              Edited(platform::Files().Read(path).value_or(QByteArray()), material, formula));
    const shared::PublishEnd end = files.Publish(configuration, {}, {});
    if (end.IsDone()) return true;
    if (end.end == shared::PublishEnd::Conflicts) return false;
    throw std::runtime_error("neither published nor in conflict");
}

void Run(const QStringList& arguments)
{
    embedded::ProjectOptions options;
    options.office = arguments.at(2);
    embedded::CreateProject(arguments.at(1), options);
    embedded::EmbeddedHost host(arguments.at(1));
    shared::OfficeFiles files(host);
    const int count = arguments.at(4).toInt();
    for (int i = 0; i < count; ++i)
        files.Fetch(u"配置%1"_s.arg(i), {});
    std::printf("ready\n");
    std::fflush(stdout);
    static_cast<void>(std::getchar());
    const CString name = arguments.at(3);
    const int worker = name.mid(name.indexOf(u'-') + 1).toInt();
    for (int i = 0; i < count; ++i) {
        // Each begins with another one, as people do.
        const CString configuration = u"配置%1"_s.arg((i + worker) % count);
        const QByteArray material = (name + configuration).toUtf8();
        const bool isDone = Work(files, configuration, material, worker);
        std::printf("%s %s\n", isDone ? "published" : "conflict", material.constData());
    }
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    if (QCoreApplication::arguments().size() != 5) return 2;
    try {
        Run(QCoreApplication::arguments());
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
