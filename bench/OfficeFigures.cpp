#include "bench/OfficeFigures.h"

#include "bench/DialogFigures.h"
#include "bench/Measure.h"
#include "embedded/data/host/CreateProject.h"
#include "embedded/data/host/EmbeddedHost.h"
#include "embedded/data/office/Office.h"
#include "embedded/windows/LibraryLists.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "shared/OfficeFiles.h"
#include "support/server/PostgresServer.h"
#include "support/server/ServiceFile.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QProcess>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <vector>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr int Processes = 50;
constexpr int Configurations = 40;
constexpr double SixtySeconds = 60'000.0;
/// Waiting in line behind all the others on one processor would take as many times as long.
constexpr double PublishBar = Processes;
constexpr double OpenBar = 1.5;
constexpr double Percentile = 0.99;
const CString Service = u"office"_s;
const QString DatabaseName = u"office"_s;

/// An office on a server of its own.
class BenchOffice
{
public:
    BenchOffice()
    {
        m_server.CreateDatabase(DatabaseName);
        m_services.Add(Service, m_server, DatabaseName, test::PostgresServer::User());
        embedded::Office::Create(Service);
    }

    void Ask(const QString& sql) const { m_server.Ask(DatabaseName, sql); }

private:
    test::PostgresServer m_server{test::Access::Socket, test::Ordering::Bytes};
    test::ServiceFile m_services;
};

void CreateOn(const QString& folder, const CString& office)
{
    embedded::ProjectOptions options;
    options.office = office;
    embedded::CreateProject(folder, options);
}

CString NameOf(int configuration)
{
    return u"配置%1"_s.arg(configuration);
}

QByteArray SampleRules()
{
    const CString path = platform::FromNative(QStringLiteral(KTQDDE_SAMPLES "/PlumbingRules.xml"));
    return platform::Files().Read(path).value();
}

/// The file with another quantity in one rule, by which as many processes can tell their edits apart.
QByteArray Edited(QByteArray file, int process, const QByteArray& formula)
{
    const QByteArray field = "strFormula=\"";
    qsizetype at = 0; // of every fifth bill item, since some rules have two
    for (int i = 0; i <= 5 * process && at >= 0; ++i)
        at = file.indexOf("<qd ", at + 1);
    if (at >= 0) at = file.indexOf(field, at);
    if (at < 0) throw std::runtime_error("the sample has too few rules");
    at += field.size();
    return file.replace(at, file.indexOf('"', at) - at, formula);
}

void PublishSamples(const QString& folder)
{
    CreateOn(folder, Service);
    embedded::EmbeddedHost host(folder);
    shared::OfficeFiles files(host);
    embedded::EnsureFolder(host.RuleFolder());
    const QByteArray rules = SampleRules();
    for (int i = 0; i < Configurations; ++i) {
        platform::Files().WriteInPlace(files.FileOf(NameOf(i)), rules);
        if (!files.Publish(NameOf(i), {}, {}).IsDone()) throw std::runtime_error("a sample is not published");
    }
}

/// What some processes took for their publications, sorted, in milliseconds, and for all of them.
struct Publications
{
    std::vector<double> each;
    double all = 0;

    double Slowest() const { return each.at(static_cast<std::size_t>(Percentile * (each.size() - 1))); }
    double ASecond() const { return 1000.0 * static_cast<double>(each.size()) / all; }
};

Publications PublishAtOnce(const QString& folder, const QString& program, int count)
{
    std::vector<std::unique_ptr<QProcess>> processes;
    for (int i = 0; i < count; ++i) {
        processes.push_back(std::make_unique<QProcess>());
        processes.back()->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        processes.back()->start(program, {u"--child"_s, u"office-publish"_s,
                                          folder + u"/of%1-%2"_s.arg(count).arg(i), QString::number(i)});
    }
    for (const auto& process : processes)
        while (!process->canReadLine())
            if (!process->waitForReadyRead(static_cast<int>(SixtySeconds)))
                throw std::runtime_error("a process is not ready to publish");
    QElapsedTimer time;
    time.start();
    for (const auto& process : processes) {
        static_cast<void>(process->readLine());
        process->write("\n");
    }
    Publications publications;
    for (const auto& process : processes) {
        if (!process->waitForFinished(-1) && process->state() != QProcess::NotRunning)
            throw std::runtime_error("a process does not end");
        if (process->exitCode() != 0) throw std::runtime_error("a process could not publish");
        for (const QByteArray& line : process->readAllStandardOutput().trimmed().split('\n'))
            publications.each.push_back(line.toDouble());
    }
    publications.all = static_cast<double>(time.elapsed());
    std::sort(publications.each.begin(), publications.each.end());
    return publications;
}

void WorkAt(shared::OfficeFiles& files, int process)
{
    // Another one than that of the process that has published alone before.
    const QByteArray own = QByteArray::number(QCoreApplication::applicationPid());
    for (int i = 0; i < Configurations; ++i) {
        const CString name = NameOf((i + process) % Configurations);
        files.Fetch(name, {});
        const CString path = files.FileOf(name);
        platform::Files().Replace(path, Edited(platform::Files().Read(path).value(), process, "长度*" + own));
        QElapsedTimer time;
        time.start();
        if (files.Publish(name, {}, {}).end != shared::PublishEnd::Published)
            throw std::runtime_error("not published");
        std::printf("%.3f\n", static_cast<double>(time.nsecsElapsed()) / 1e6);
    }
}

} // namespace

int RunOfficeChild(const QStringList& arguments)
{
    CreateOn(arguments.value(0), Service);
    embedded::EmbeddedHost host(arguments.value(0));
    shared::OfficeFiles files(host);
    std::printf("ready\n");
    std::fflush(stdout);
    static_cast<void>(std::getchar());
    WorkAt(files, arguments.value(1).toInt());
    return 0;
}

bool OfficePublish(const QString& folder, const QString& program)
{
    const BenchOffice office;
    PublishSamples(folder + u"/first"_s);
    const Publications alone = PublishAtOnce(folder, program, 1);
    const Publications fifty = PublishAtOnce(folder, program, Processes);
    const std::string peer = "alone, all " + std::to_string(static_cast<int>(fifty.ASecond())) + "/s";
    return Report({"office_publish", peer.c_str(), PublishBar}, fifty.Slowest(), alone.Slowest(),
                  fifty.Slowest() / alone.Slowest());
}

bool OfficeOpen(const QString& folder, int rounds)
{
    const BenchOffice office;
    CreateOn(folder + u"/on-office"_s, Service);
    CreateOn(folder + u"/alone"_s, {});
    const auto open = [&](const QString& project) {
        const embedded::EmbeddedHost host(folder + project);
        Keep(&host);
    };
    const Timed timed = Alternate(
        rounds, [&] { open(u"/on-office"_s); }, [&] { open(u"/alone"_s); });
    return Report({"office_open", "open_sqlite", OpenBar}, timed.oursMs, timed.peerMs, timed.Ratio());
}

bool OfficeSearch(const QString& folder, int rounds)
{
    const BenchOffice office;
    office.Ask(
        u"DELETE FROM ktqdde.bill_items WHERE items = 'GB50856-2013'; "
        "INSERT INTO ktqdde.bill_items (items, number, name, unit, unit_code, with_annex, cal_rule, "
        "index_path) "
        "SELECT 'GB50856-2013', (31001001001 + i)::text, "
        "CASE WHEN i % 3 = 0 THEN '镀锌钢管 DN' || i % 97 ELSE '复合管 ' || i % 97 || ' 法兰阀门' END, "
        "'m', 1, 0, '', (SELECT min(index_path) FROM ktqdde.bill_sections WHERE items = 'GB50856-2013') "
        "FROM generate_series(0, 9999) AS i"_s);
    CreateOn(folder + u"/search"_s, Service);
    const embedded::EmbeddedHost host(folder + u"/search"_s);
    return SearchIn("office_search", embedded::BillItems(host.Contents()), rounds);
}

} // namespace bench
