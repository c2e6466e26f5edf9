#include "embedded/PublisherContent.h"
#include "embedded/data/engine/Error.h"
#include "embedded/data/office/PublishedConfigurations.h"

#include <QtCore/QCoreApplication>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

void Say(const std::string& text)
{
    std::fprintf(stdout, "%s\n", text.c_str());
    std::fflush(stdout);
}

embedded::VersionMark MarkOf(int number)
{
    if (number == 0) return {};
    return {number, embedded::DigestOf(test::ContentOf(number))};
}

int Publish(const CString& service, const CString& configuration, int base)
{
    embedded::Office office(service);
    embedded::PublishedConfigurations published(office);
    for (;; ++base) {
        const QByteArray content = test::ContentOf(base + 1);
        Say("asked " + std::to_string(base + 1));
        const auto outcome = published.Publish({configuration, MarkOf(base), content});
        const bool isTaken = outcome.end == embedded::PublishOutcome::Published ||
                             outcome.end == embedded::PublishOutcome::Unchanged;
        if (!isTaken || outcome.version != base + 1) {
            Say("refused " + std::to_string(outcome.end));
            return 1;
        }
        Say("taken " + std::to_string(outcome.version));
    }
}

} // namespace

/// publisher create OFFICE: creates it; says "begun" before it does and "created" afterwards.
/// publisher publish OFFICE CONFIGURATION BASE: publishes the versions after BASE, one after the other and
/// without end; says "asked NUMBER" before each and "taken NUMBER" when the office has taken it. Answers 0,
/// or says the reason and answers 1, with 2 for an office that cannot be reached.
int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    try {
        if (arguments.size() == 5 && arguments.at(1) == u"publish"_s)
            return Publish(arguments.at(2), arguments.at(3), arguments.at(4).toInt());
        if (arguments.size() != 3 || arguments.at(1) != u"create"_s) return 3;
        Say("begun");
        embedded::Office::Create(arguments.at(2));
        Say("created");
        return 0;
    } catch (const embedded::UnreachableError& error) {
        Say(error.what());
        return 2;
    } catch (const embedded::Error& error) {
        Say(error.what());
        return 1;
    }
}
