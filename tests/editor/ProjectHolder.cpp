// Another program at work on a project, for tests: `project_holder PROJECT [FILE]` has the project open and,
// if one is named by its path text, holds a rule file. Prints "open" when it does, and ends with its standard
// input.
#include "editor/files/OpenMark.h"
#include "embedded/data/history/RuleFileLock.h"

#include <QtCore/QCoreApplication>

#include <cstdio>
#include <exception>
#include <optional>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    try {
        const embedded::ProjectFolder project(arguments.value(1));
        const editor::OpenMark mark(project);
        std::optional<embedded::RuleFileLock> lock;
        if (arguments.size() > 2) lock.emplace(project, CStringArray{arguments.value(2)});
        std::puts("open");
        std::fflush(stdout);
        while (std::getchar() != EOF) {
        }
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
