#include "cli/commands/rules/CoverageCommand.h"

#include "cli/pricing/CoverageReport.h"
#include "cli/pricing/PricingRules.h"
#include "cli/printing/Output.h"
#include "cli/printing/WatchedWork.h"
#include "cli/reading/Failure.h"
#include "cli/reading/RuleFiles.h"
#include "platform/Paths.h"
#include "platform/ReplacedFile.h"
#include "shared/GatherPricingFacts.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace cli {

namespace {

/// Pixels for a unit of the picture, so that it stays sharp on fine screens and in print.
constexpr double PngScale = 2;

void CheckForm(const CString& path)
{
    const bool isKnown = path.isEmpty() || path.endsWith(u".svg"_s, Qt::CaseInsensitive) ||
                         path.endsWith(u".png"_s, Qt::CaseInsensitive);
    if (!isKnown) throw UsageError(u"-o 的文件名要以 .svg 或 .png 结尾：%1"_s.arg(path));
}

rules::Coverage CoverageOf(const rules::TakeoffJob& job, rules::Measures measures)
{
    rules::CoverageBuilder builder(job.configuration, job.facts, std::move(measures));
    rules::TakeoffPricing pricing(job);
    WatchedWork work;
    const embedded::Progress progress = work.Progress();
    try {
        pricing.Price(shared::WatchFor(
            progress, [&](const rules::PricedRow& priced) { builder.Take(priced); },
            [&] { builder.Begin(); }));
    } catch (const embedded::Cancelled&) {
        throw Refusal(u"已取消，没有写出"_s);
    }
    return builder.Finish();
}

/// Leaves the category that is asked for, and counts those that the table has nothing of.
void Narrow(CoverageReport& report, const rules::Configuration& configuration)
{
    if (!report.category.isEmpty()) {
        std::erase_if(report.coverage.categories,
                      [&](const auto& one) { return one.category->text != report.category; });
        return;
    }
    for (const rules::Specialty& specialty : configuration.Specialties())
        for (const rules::BigCategory& big : specialty.bigCategories)
            for (const rules::SmallCategoryPtr& small : big.smallCategories) {
                const auto rules = std::count_if(small->rules.begin(), small->rules.end(),
                                                 [](const rules::Rule& rule) { return !rule.isDefault; });
                ++report.otherCategories;
                report.otherRules += static_cast<std::uint64_t>(rules);
            }
    for (const rules::CategoryCoverage& category : report.coverage.categories) {
        --report.otherCategories;
        for (const rules::Rule& rule : category.category->rules)
            if (!rule.isDefault) --report.otherRules;
    }
}

void WritePicture(const CString& path, const CoverageReport& report)
{
    const Picture picture = CoveragePicture(report);
    const QByteArray bytes =
        path.endsWith(u".svg"_s, Qt::CaseInsensitive) ? ToSvg(picture) : ToPng(picture, PngScale);
    platform::ReplacedFile file(path);
    file.Write(bytes);
    file.Commit();
}

} // namespace

CommandInfo CoverageCommand::Describe()
{
    CommandInfo info;
    info.name = u"coverage"_s;
    info.syntax = u"TABLE [--sheet NAME] [--category TEXT] [-o OUT] [--json] [--config FILE] [--force]"_s;
    info.summary = u"看构件表里的构件被哪些规则收下，哪些落在默认规则"_s;
    info.description =
        u"TABLE 是构件表，同 apply。按类别列出每条规则命中几个构件、哪些规则从未命中；没有规则收下的构件按\n"
        "规则看的属性分组，工程量大的在前，每组附一行 ktqdde batch 的操作，照它就能加上一条规则。\n"
        "OUT 以 .svg 或 .png 结尾，是各类别每条规则和默认规则收下多少构件的图。规则文件不改动。"_s;
    info.minPositional = info.maxPositional = 1;
    info.options = {SheetOption(),
                    {u"category"_s, u"TEXT"_s, u"只看这个小类：给排水\\管道\\给水管，或给水管"_s, {}},
                    OutputOption(u"把图写到这个文件：.svg 或 .png"_s),
                    {u"json"_s, {}, u"以 JSON 输出，写法见手册 docs/json.md"_s, {}},
                    PricingConfigOption(),
                    ForceOption()};
    return info;
}

CoverageCommand::CoverageCommand() : Command(Describe()) {}

void CoverageCommand::Run(const Arguments& arguments) const
{
    CheckForm(arguments.Value(u"output"_s));
    const CString target = OutputFile(arguments);
    const Session session(arguments);
    const CString file = PricingFile(arguments);
    rules::TakeoffJob job = JobFor(ResolvePath(arguments.Positional()[0]), file, session);
    job.sheet = arguments.Value(u"sheet"_s);
    CoverageReport report;
    report.table = platform::ToNative(job.table);
    report.ruleFile = platform::ToNative(file);
    if (arguments.Has(u"category"_s))
        report.category = NamedCategory(arguments.Value(u"category"_s), *job.configuration);
    report.coverage = CoverageOf(job, shared::MeasuresOf(session.Host().CatalogueContents()));
    Narrow(report, *job.configuration);
    if (!target.isEmpty()) WritePicture(target, report);
    if (arguments.Has(u"json"_s))
        WriteText(CoverageJson(report));
    else
        WriteText(CoverageText(report) +
                  (target.isEmpty() ? CString() : u"已写出：%1\n"_s.arg(platform::ToNative(target))));
}

} // namespace cli
