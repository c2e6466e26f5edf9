#include "embedded/data/host/EmbeddedHost.h"

#include "embedded/data/engine/Error.h"
#include "embedded/data/host/CreateProject.h"

#include <QtCore/QCoreApplication>

#include <cstdio>

/// opener create|open FOLDER: does that and answers 0, or prints the reason and answers 1.
int main(int argc, char** argv)
{
    using namespace Qt::StringLiterals;
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3) return 2;
    try {
        if (arguments.at(1) == u"create"_s) embedded::CreateProject(arguments.at(2), {});
        const embedded::EmbeddedHost host(arguments.at(2));
        return host.Contents().bills.empty() ? 3 : 0;
    } catch (const embedded::Error& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
