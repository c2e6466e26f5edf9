#include "cli/commands/CompareCommand.h"

#include "cli/pricing/OutcomeChanges.h"
#include "cli/pricing/PricingRules.h"
#include "cli/printing/ComparisonJson.h"
#include "cli/printing/Output.h"
#include "cli/printing/WatchedWork.h"
#include "cli/reading/Failure.h"
#include "cli/reading/RuleFiles.h"
#include "cli/reading/Session.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "rules/compare/DifferenceText.h"
#include "rules/model/Snapshot.h"

using namespace Qt::StringLiterals;

namespace cli {

namespace {

/// How many components the terminal shows.
constexpr std::size_t ChangesShown = 40;

CommandInfo Describe()
{
    CommandInfo info;
    info.name = u"compare"_s;
    info.syntax = u"A B [--on TABLE [--sheet NAME]] [--json]"_s;
    info.summary = u"逐条规则比较两个规则文件，还能指出哪些构件因此变化"_s;
    info.description =
        u"A 和 B 是规则文件；指明了工程时也可以是配置名。列出从 A 到 B 加了、删了、改了和移动了的规则，\n"
        "改了的规则列出变了的条件、清单和定额。规则按编号辨认，编号重排过的按内容辨认。只因打开并关闭\n"
        "配置而补上的默认规则只用一行说明。\n"
        "--on TABLE 按构件表（手册 docs/takeoff.md）试套两次，列出清单、定额或工程量不同的构件，需要指明\n"
        "工程。什么也不写入。有没有差别，退出状态都是 0。"_s;
    info.minPositional = info.maxPositional = 2;
    info.options = {{u"on"_s, u"TABLE"_s, u"构件表：CSV、XLSX 或 ODS"_s, {}},
                    {u"sheet"_s, u"NAME"_s, u"构件表是工作簿时的工作表；不写时为第一个"_s, {}},
                    {u"json"_s, {}, u"以 JSON 输出，写法见手册 docs/json.md"_s, {}}};
    info.needsProject = false;
    return info;
}

rules::ConfigurationPtr Read(const CString& path)
{
    if (!platform::Files().Exists(path)) CheckRuleFile(path);
    CheckForReading(path);
    CString reason;
    rules::ConfigurationPtr read = rules::ReadRuleFile(path, reason);
    if (!read) throw Refusal(u"%1：%2"_s.arg(platform::ToNative(path), reason));
    return read;
}

struct Outcomes
{
    bool areAsked = false;
    OutcomeChanges found{};
};

Outcomes OutcomesOf(const Arguments& arguments, const CString& before, const CString& after)
{
    if (!arguments.Has(u"on"_s)) return {};
    const Session session(arguments);
    WatchedWork work;
    TakeoffJob job = JobFor(ResolvePath(arguments.Value(u"on"_s)), before, session);
    job.sheet = arguments.Value(u"sheet"_s);
    return {true, CompareOutcomes(job, ReadPricingRules(after, session), work.Progress())};
}

CString OutcomesText(const OutcomeChanges& outcomes)
{
    CString text;
    for (std::size_t i = 0; i < outcomes.changes.size() && i < ChangesShown; ++i) {
        const OutcomeChange& change = outcomes.changes[i];
        text += u"\n第 %1 行 %2 %3（%4）\n"_s.arg(change.line).arg(change.id, change.name, change.category);
        for (const CString& line : change.before)
            text += u"  - "_s + line + u'\n';
        for (const CString& line : change.after)
            text += u"  + "_s + line + u'\n';
    }
    if (outcomes.changes.size() > ChangesShown)
        text += u"\n另有 %1 个构件，全部见 --json。\n"_s.arg(outcomes.changes.size() - ChangesShown);
    return text + u"\n%1 个构件中 %2 个有变化。\n"_s.arg(outcomes.components).arg(outcomes.changes.size());
}

void WriteLines(JsonWriter& json, const CStringArray& lines)
{
    json.BeginArray();
    for (const CString& line : lines)
        json.Text(line);
    json.EndArray();
}

void WriteOutcomes(JsonWriter& json, const OutcomeChanges& outcomes)
{
    json.Key(u"components").Number(static_cast<qint64>(outcomes.components));
    json.Key(u"changedComponents").BeginArray();
    for (const OutcomeChange& change : outcomes.changes) {
        json.BeginObject();
        json.Key(u"line").Number(change.line);
        json.Key(u"id").Text(change.id);
        json.Key(u"name").Text(change.name);
        json.Key(u"category").Text(change.category);
        json.Key(u"before");
        WriteLines(json, change.before);
        json.Key(u"after");
        WriteLines(json, change.after);
        json.EndObject();
    }
    json.EndArray();
}

CString ComparisonJson(const CString& before, const CString& after, const rules::Comparison& comparison,
                       const Outcomes& outcomes)
{
    JsonWriter json(JsonWriter::Style::Indented);
    json.BeginObject();
    json.Key(u"from").Text(platform::ToNative(before));
    json.Key(u"to").Text(platform::ToNative(after));
    WriteComparison(json, comparison);
    if (outcomes.areAsked) WriteOutcomes(json, outcomes.found);
    json.EndObject();
    return json.Result();
}

} // namespace

CompareCommand::CompareCommand() : Command(Describe()) {}

void CompareCommand::Run(const Arguments& arguments) const
{
    if (arguments.Has(u"sheet"_s) && !arguments.Has(u"on"_s)) throw UsageError(u"--sheet 只与 --on 一起用"_s);
    const CString before = NamedRuleFile(arguments, arguments.Positional()[0]);
    const CString after = NamedRuleFile(arguments, arguments.Positional()[1]);
    const rules::Comparison comparison = rules::Compare(*Read(before), *Read(after));
    const Outcomes outcomes = OutcomesOf(arguments, before, after);
    if (arguments.Has(u"json"_s)) return WriteText(ComparisonJson(before, after, comparison, outcomes));
    WriteText(rules::DifferenceLines(comparison).join(u'\n') + u'\n');
    if (outcomes.areAsked) WriteText(OutcomesText(outcomes.found));
}

} // namespace cli
