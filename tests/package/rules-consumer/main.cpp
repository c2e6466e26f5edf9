// A program that prices, against what is installed of the rules alone: reads a rule file, asks which rule a
// component gets and why, and makes a bill.
#include <rules/bill/BillComparison.h>
#include <rules/bill/Coverage.h>
#include <rules/bill/PriceTakeoff.h>
#include <rules/match/Trace.h>
#include <rules/model/Snapshot.h>
#include <tables/TableError.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <cstdio>
#include <cstdlib>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

const char* const RuleFile =
    R"(<自动套清单定额配置信息><a name="给排水"><b name="管道"><c name="给水管"><Config>
<Config id="2" bDefault="0"><Condition>
<condition strCFType="公称直径" bEqual="false" strRangeoperator2="≤" strRange2="50"/></Condition>
<Qd><qd id="1" strQdId="031001001001" strName="镀锌钢管" strUnit="m" strQdCode="L" strFormula="长度"/></Qd></Config>
<Config id="1" bDefault="1"/></Config></c></b></a></自动套清单定额配置信息>)";

void Require(bool holds, const char* what)
{
    if (holds) return;
    std::fprintf(stderr, "failed: %s\n", what);
    std::exit(1);
}

void Write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    Require(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size(), "the file is there");
}

/// A take-off table, with an id that comes twice; what the rules catch, and what another configuration
/// changes.
void PriceTable(const QString& path, rules::TakeoffJob job)
{
    const QByteArray row = "给排水\\管道\\给水管";
    Write(path, "构件编号,类别,公称直径,长度\n1," + row + ",50,1.5\n2," + row + ",40,2\n1," + row +
                    ",50,9\n3," + row + ",65,4\n");
    job.table = path;
    rules::CoverageBuilder coverage(job.configuration, job.facts, {});
    rules::BillComparison comparison(job.configuration, job.facts);
    rules::TakeoffPricing pricing(job);
    const rules::Bill& bill = pricing.Price({.begin =
                                                 [&] {
                                                     coverage.Begin();
                                                     comparison.Begin();
                                                 },
                                             .take =
                                                 [&](const rules::PricedRow& priced) {
                                                     coverage.Take(priced);
                                                     comparison.Take(priced);
                                                 }});
    Require(bill.rows.at(0).quantity == u"3.50"_s, "the first component of an id counts");
    Require(bill.totals == rules::Totals{4, 2, 1, 1}, "every component is accounted for");
    Require(coverage.Finish().categories.at(0).hits == std::vector<std::uint64_t>{2, 1}, "hits are counted");
    Require(comparison.Rows(bill, comparison.After()).empty(), "one configuration is like itself");
    Write(path, "构件编号,类别\n1,x,3\n");
    try {
        rules::TakeoffPricing(job).Price();
        Require(false, "a row that goes on behind the headings is refused");
    } catch (const tables::TableError& error) {
        Require(error.Where().line == 2, "the place is told across the library");
    }
}

} // namespace

int main()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"rules.xml"_s);
    QFile file(path);
    Require(file.open(QIODevice::WriteOnly) && file.write(RuleFile) > 0, "the rule file is there");
    file.close();
    CString reason;
    Require(rules::ReadRuleFile(path + u'x', reason) == nullptr && !reason.isEmpty(),
            "a missing file has a reason");
    const rules::ConfigurationPtr configuration = rules::ReadRuleFile(path, reason);
    Require(configuration != nullptr, "the rule file is read");
    const CString category = u"给排水\\管道\\给水管"_s;

    const rules::CategoryMatcher matcher(configuration->Find(category), {});
    const rules::Trace trace = rules::Explain(matcher, std::vector<rules::Cell>{u"65"_s});
    Require(trace.applies == 1 && trace.before.size() == 1, "DN65 gets the default rule");

    rules::PricingFacts facts;
    facts.billLibrary = u"L"_s;
    rules::BillBuilder builder(configuration, facts, {u"公称直径"_s, u"长度"_s});
    const std::vector<CString> cells{u"50"_s, u"12.345"_s};
    Require(builder.Add({u"1"_s, category, {}, cells}).outcome == rules::Outcome::Priced, "DN50 is priced");
    Require(builder.Finish().rows.at(0).quantity == u"12.35"_s, "the bill has the length");
    PriceTable(folder.filePath(u"takeoff.csv"_s), {{}, {}, {}, configuration, facts});
    return 0;
}
