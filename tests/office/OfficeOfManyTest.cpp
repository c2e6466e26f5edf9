#include "office/OfficeSetting.h"
#include "platform/Files.h"
#include "support/Patience.h"

#include <QtCore/QProcess>

#include <gtest/gtest.h>

#include <vector>

using namespace Qt::StringLiterals;

namespace {

int FromEnvironment(const char* name, int usual)
{
    bool isNumber = false;
    const int number = qEnvironmentVariableIntValue(name, &isNumber);
    return isNumber ? number : usual;
}

/// Programs that publish the same configurations at once, each from a project of its own.
class Workers
{
public:
    Workers(const test::OfficeSetting& setting, int count, int configurations)
    {
        for (int i = 0; i < count; ++i) {
            m_workers.push_back(std::make_unique<QProcess>());
            const QString name = u"人-%1"_s.arg(i);
            m_workers.back()->start(
                QString::fromUtf8(KTQDDE_OFFICE_WORKER),
                {setting.Folder(u"工程%1"_s.arg(i)), u"li"_s, name, QString::number(configurations)});
        }
    }

    /// All begin at once; gives what each has printed.
    QList<QByteArray> Run()
    {
        for (const auto& worker : m_workers)
            test::WaitFor(u"a worker to be ready"_s, [&] {
                return worker->canReadLine() || worker->waitForReadyRead(100) ||
                       worker->state() == QProcess::NotRunning;
            });
        for (const auto& worker : m_workers)
            worker->write("\n");
        QList<QByteArray> printed;
        for (const auto& worker : m_workers) {
            test::WaitForEnd(*worker);
            EXPECT_EQ(worker->exitCode(), 0) << worker->readAllStandardError().toStdString();
            printed += worker->readAllStandardOutput().trimmed().split('\n');
        }
        return printed;
    }

private:
    std::vector<std::unique_ptr<QProcess>> m_workers;
};

CString NameOf(int configuration)
{
    return u"配置%1"_s.arg(configuration);
}

/// The office has these configurations, each with one rule.
void PublishFirst(test::OfficeProject& keeper, int configurations)
{
    keeper.Write(test::PipeFile(test::PipeElement(2, "钢管")));
    for (int i = 0; i < configurations; ++i) {
        platform::Files().WriteInPlace(keeper.Files().FileOf(NameOf(i)), keeper.Read());
        keeper.Files().Publish(NameOf(i), {}, {});
    }
}

} // namespace

TEST(OfficeOfMany, EveryPublishedRuleIsInTheLastVersionOrInAConflictThatWasTold)
{
    const int people = FromEnvironment("KTQDDE_OFFICE_PROCESSES", 5);
    const int configurations = FromEnvironment("KTQDDE_OFFICE_CONFIGURATIONS", 3);
    const test::OfficeSetting setting;
    test::OfficeProject keeper(setting, u"王工程"_s, u"wang"_s);
    PublishFirst(keeper, configurations);
    const QList<QByteArray> printed = Workers(setting, people, configurations).Run();
    QByteArray all;
    for (int i = 0; i < configurations; ++i)
        all += keeper.Files().Content(NameOf(i), keeper.Files().LastVersion(NameOf(i)));
    int published = 0;
    int conflicts = 0;
    for (const QByteArray& line : printed) {
        const QByteArray value = "strValue=\"" + line.mid(line.indexOf(' ') + 1) + '"';
        if (line.startsWith("published ")) {
            ++published;
            EXPECT_EQ(all.count(value), 1) << line.toStdString();
        } else if (line.startsWith("conflict ")) {
            ++conflicts;
            EXPECT_EQ(all.count(value), 0) << line.toStdString();
        }
    }
    EXPECT_EQ(published + conflicts, people * configurations);
    // All began with the first version: of those who change the same rule, the first has it published.
    const int quarrelers = (people + 3) / 4;
    EXPECT_EQ(conflicts, (quarrelers - 1) * configurations);
    RecordProperty("published", published);
    RecordProperty("conflicts", conflicts);
}
