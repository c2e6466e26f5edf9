#include "cli/commands/rules/CompareCommand.h"

#include "cli/pricing/BillChange.h"
#include "cli/pricing/PricingRules.h"
#include "cli/printing/ComparisonJson.h"
#include "cli/printing/Output.h"
#include "cli/printing/WatchedWork.h"
#include "cli/reading/Failure.h"
#include "cli/reading/RuleFiles.h"
#include "cli/reading/Session.h"
#include "embedded/data/engine/Progress.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "rules/compare/DifferenceText.h"
#include "rules/model/Snapshot.h"

#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace cli {

namespace {

/// A rule file as it was at one moment: all that is told is told of that.
struct ReadFile
{
    CString path;
    rules::ConfigurationPtr rules;
};

ReadFile Read(const CString& path)
{
    if (!platform::Files().Exists(path)) CheckRuleFile(path);
    CheckForReading(path);
    CString reason;
    rules::ConfigurationPtr read = rules::ReadRuleFile(path, reason);
    if (!read) throw Refusal(u"%1：%2"_s.arg(platform::ToNative(path), reason));
    return {path, std::move(read)};
}

/// What the two make of a table.
class Outcomes
{
public:
    Outcomes(const Arguments& arguments, const ReadFile& before, const ReadFile& after)
        : m_session(arguments), m_job(JobOf(arguments, before, m_session)), m_pricing(m_job),
          m_change(m_job, PricingRulesOf(*after.rules, m_session), platform::ToNative(before.path),
                   platform::ToNative(after.path))
    {
        PriceBoth(m_pricing, m_change, m_work.Progress());
    }

    CString Text() const { return ChangeText(m_change, m_pricing); }
    void Put(JsonWriter& json) { PutBillChange(json, m_change, m_pricing, m_work.Progress()); }

private:
    static rules::TakeoffJob JobOf(const Arguments& arguments, const ReadFile& before, const Session& session)
    {
        rules::TakeoffJob job =
            JobFor(ResolvePath(arguments.Value(u"on"_s)), PricingRulesOf(*before.rules, session), session);
        job.sheet = arguments.Value(u"sheet"_s);
        return job;
    }

    Session m_session;
    WatchedWork m_work;
    rules::TakeoffJob m_job;
    rules::TakeoffPricing m_pricing;
    BillChange m_change;
};

CString ComparisonJson(const ReadFile& before, const ReadFile& after, const rules::Comparison& comparison,
                       Outcomes* outcomes)
{
    JsonWriter json(JsonWriter::Style::Indented);
    json.BeginObject();
    json.Key(u"from").Text(platform::ToNative(before.path));
    json.Key(u"to").Text(platform::ToNative(after.path));
    WriteComparison(json, comparison);
    if (outcomes != nullptr) {
        json.Key(u"on");
        outcomes->Put(json);
    }
    json.EndObject();
    return json.Result();
}

CString TextOf(const Arguments& arguments)
{
    const ReadFile before = Read(NamedRuleFile(arguments, arguments.Positional()[0]));
    const ReadFile after = Read(NamedRuleFile(arguments, arguments.Positional()[1]));
    const rules::Comparison comparison = rules::Compare(*before.rules, *after.rules);
    std::optional<Outcomes> outcomes;
    if (arguments.Has(u"on"_s)) outcomes.emplace(arguments, before, after);
    if (arguments.Has(u"json"_s))
        return ComparisonJson(before, after, comparison, outcomes ? &*outcomes : nullptr);
    const CString text = rules::DifferenceLines(comparison).join(u'\n') + u'\n';
    return outcomes ? text + u'\n' + outcomes->Text() : text;
}

} // namespace

CommandInfo CompareCommand::Describe()
{
    CommandInfo info;
    info.name = u"compare"_s;
    info.syntax = u"A B [--on TABLE [--sheet NAME]] [--json]"_s;
    info.summary = u"逐条规则比较两个规则文件，还能指出哪些构件因此变化"_s;
    info.description =
        u"A 和 B 是规则文件；指明了工程时也可以是配置名。列出从 A 到 B 加了、删了、改了和移动了的规则，\n"
        "改了的规则列出变了的条件、清单和定额。规则按编号辨认，编号重排过的按内容辨认。只因打开并关闭\n"
        "配置而补上的默认规则只用一行说明。\n"
        "--on TABLE 按构件表（手册 docs/takeoff.md）试套两次，列出规则、项或数量不同的构件和变了的清单行，\n"
        "需要指明工程。什么也不写入。有没有差别，退出状态都是 0。"_s;
    info.minPositional = info.maxPositional = 2;
    info.options = {{u"on"_s, u"TABLE"_s, u"构件表：CSV、XLSX 或 ODS"_s, {}},
                    {u"sheet"_s, u"NAME"_s, u"构件表是工作簿时的工作表；不写时为第一个"_s, {}},
                    {u"json"_s, {}, u"以 JSON 输出，写法见手册 docs/json.md"_s, {}}};
    info.needsProject = false;
    return info;
}

CompareCommand::CompareCommand() : Command(Describe()) {}

void CompareCommand::Run(const Arguments& arguments) const
{
    if (arguments.Has(u"sheet"_s) && !arguments.Has(u"on"_s)) throw UsageError(u"--sheet 只与 --on 一起用"_s);
    CString text;
    try {
        text = TextOf(arguments);
    } catch (const embedded::Cancelled&) {
        throw Refusal(u"已取消"_s);
    }
    WriteText(text);
}

} // namespace cli
