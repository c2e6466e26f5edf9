#include "embedded/PublisherContent.h"
#include "embedded/data/engine/Error.h"
#include "embedded/data/office/PublishedConfigurations.h"

#include <QtCore/QCoreApplication>

#include <cstdio>

/// publisher OFFICE CONFIGURATION BASE LAST: publishes the versions after BASE up to LAST, one after the
/// other. Prints "begun" when it is connected, the number of each version when the office has taken it, and
/// answers 0; or prints the reason and answers 1, with 2 for an office that cannot be reached.
int main(int argc, char** argv)
{
    using namespace Qt::StringLiterals;
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 5) return 3;
    const auto say = [](const std::string& text) {
        std::fprintf(stdout, "%s\n", text.c_str());
        std::fflush(stdout);
    };
    try {
        embedded::Office office(arguments.at(1));
        embedded::PublishedConfigurations published(office);
        say("begun");
        for (int base = arguments.at(3).toInt(); base < arguments.at(4).toInt(); ++base) {
            const auto outcome = published.Publish({arguments.at(2), base, test::ContentOf(base + 1)});
            const bool isTaken = outcome.end == embedded::PublishOutcome::Published ||
                                 outcome.end == embedded::PublishOutcome::Unchanged;
            if (!isTaken || outcome.version != base + 1) {
                say("refused " + std::to_string(outcome.end));
                return 1;
            }
            say(std::to_string(outcome.version));
        }
        return 0;
    } catch (const embedded::UnreachableError& error) {
        say(error.what());
        return 2;
    } catch (const embedded::Error& error) {
        say(error.what());
        return 1;
    }
}
