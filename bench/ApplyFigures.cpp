#include "bench/ApplyFigures.h"

#include "bench/Measure.h"
#include "embedded/data/host/CreateProject.h"
#include "embedded/data/host/EmbeddedHost.h"
#include "platform/Paths.h"
#include "platform/Process.h"
#include "rules/bill/PriceTakeoff.h"
#include "rules/model/Snapshot.h"
#include "shared/GatherPricingFacts.h"
#include "tables/TableReader.h"

#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>

#include <cstdio>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr qint64 Components = 1'000'000;
constexpr qint64 ManyComponents = 10'000'000;
constexpr double Megabyte = 1 << 20;

QString Sample(const QString& name)
{
    return QStringLiteral(KTQDDE_SAMPLES) + u'/' + name;
}

/// The sample's rows with numbers for ids: in the sample one comes twice, here none does.
void Generate(const QString& path, qint64 components)
{
    QFile sample(Sample(u"PlumbingTakeoff.csv"_s));
    if (!sample.open(QIODevice::ReadOnly)) throw std::runtime_error("the sample is missing");
    QList<QByteArray> rows = sample.readAll().trimmed().split('\n');
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) throw std::runtime_error("the table cannot be written");
    file.write(rows.takeFirst() + '\n');
    for (QByteArray& row : rows)
        row = row.sliced(row.indexOf(',')).trimmed() + '\n';
    QByteArray piece;
    for (qint64 i = 0; i < components; ++i) {
        piece += "GS-" + QByteArray::number(i) + rows[i % rows.size()];
        if (piece.size() < (1 << 20) && i + 1 < components) continue;
        if (file.write(piece) != piece.size()) throw std::runtime_error("no room for the table");
        piece.resize(0);
    }
}

rules::TakeoffJob JobFor(const QString& table)
{
    const QTemporaryDir folder;
    embedded::CreateProject(folder.filePath(u"project"_s), {});
    const embedded::EmbeddedHost host(folder.filePath(u"project"_s));
    CString reason;
    rules::TakeoffJob job;
    job.table = platform::FromNative(table);
    job.configuration = rules::ReadRuleFile(platform::FromNative(Sample(u"PlumbingRules.xml"_s)), reason);
    if (!job.configuration) throw std::runtime_error(reason.toStdString());
    job.facts = shared::PricingFactsOf(host, rules::PricingMode::Bill);
    return job;
}

void Price(const rules::TakeoffJob& job, qint64 components)
{
    rules::TakeoffPricing pricing(job);
    const rules::Bill& bill = pricing.Price();
    const bool all = bill.totals.in == static_cast<std::uint64_t>(components) && bill.rows.size() > 20 &&
                     bill.totals.refused * 100 < bill.totals.in;
    if (components > 0 && !all) throw std::runtime_error("the bill is another one than it should be");
    Keep(&bill);
}

void ReadAlone(const CString& table)
{
    const std::unique_ptr<tables::TableReader> reader = tables::OpenTable(table);
    std::size_t cells = 0;
    while (const tables::Row* const row = reader->Next())
        cells += row->cells.size();
    Keep(&cells);
}

double PeakOf(const QString& program, const QString& table)
{
    QProcess child;
    child.start(program, {u"--child"_s, u"peak-apply"_s, table});
    child.waitForFinished(-1);
    const double answer = child.readAllStandardOutput().trimmed().toDouble();
    if (child.exitCode() != 0 || answer <= 0) throw std::runtime_error("a child process did not answer");
    return answer / Megabyte;
}

} // namespace

bool Apply(const QString& folder, int rounds)
{
    const QString table = folder + u"/apply.csv"_s;
    Generate(table, Components);
    const rules::TakeoffJob job = JobFor(table);
    const Timed timed = Alternate(
        rounds, [&] { Price(job, Components); }, [&] { ReadAlone(job.table); });
    QFile::remove(table);
    return Report({"apply", "read_csv_alone", 2.0}, timed.oursMs, timed.peerMs, timed.Ratio());
}

bool ApplyMemory(const QString& folder, const QString& program)
{
    const QString table = folder + u"/apply_memory.csv"_s;
    Generate(table, Components);
    const double one = PeakOf(program, table);
    Generate(table, ManyComponents);
    const double ten = PeakOf(program, table);
    QFile::remove(table);
    return Report({"apply_memory", "1,000,000_rows_MiB", 1.2}, ten, one, ten / one);
}

int RunApplyChild(const QString& table)
{
    Price(JobFor(table), 0);
    std::printf("%lld\n", static_cast<long long>(platform::PeakMemory()));
    return 0;
}

} // namespace bench
