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
///
/// office_worker edit FOLDER CONFIGURATION NUMBER: gives the first rule of the project's file the quantity
/// "长度NUMBER", says "edited NUMBER", publishes it, says "published VERSION NUMBER", and goes on with the
/// next number without end. Answers 2 when the office cannot be reached, and 1, with "conflict" or the error,
/// for whatever else comes of it.

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

/// A file large enough that publishing it takes a moment.
QByteArray LargeFile(int number)
{
    constexpr int Rules = 300;
    QByteArray rules = test::PipeElement(2, "钢管", "长度" + QByteArray::number(number));
    for (int i = 0; i < Rules; ++i)
        rules += test::PipeElement(3 + i, "材质" + QByteArray::number(i));
    return test::PipeFile(rules);
}

int Edit(const QString& folder, const CString& configuration, int number)
{
    embedded::EmbeddedHost host(folder);
    shared::OfficeFiles files(host);
    for (;; ++number) {
        platform::Files().Replace(files.FileOf(configuration), LargeFile(number));
        std::printf("edited %d\n", number);
        std::fflush(stdout);
        const shared::PublishEnd end = files.Publish(configuration, {}, {});
        if (end.end == shared::PublishEnd::Waits) return 2;
        if (!end.IsDone() || end.IsMerged()) {
            std::printf("conflict %d\n", number);
            return 1;
        }
        std::printf("published %d %d\n", end.version, number);
        std::fflush(stdout);
    }
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
        const QStringList arguments = QCoreApplication::arguments();
        if (arguments.at(1) == u"edit")
            return Edit(arguments.at(2), arguments.at(3), arguments.at(4).toInt());
        Run(arguments);
        return 0;
    } catch (const embedded::UnreachableError&) {
        return 2;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "error: %s\n", error.what());
        return 1;
    }
}
