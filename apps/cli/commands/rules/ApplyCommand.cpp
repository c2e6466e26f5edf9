#include "cli/commands/rules/ApplyCommand.h"

#include "cli/pricing/BillChange.h"
#include "cli/pricing/BillTable.h"
#include "cli/pricing/PricingJson.h"
#include "cli/pricing/PricingRules.h"
#include "cli/printing/Output.h"
#include "cli/printing/TextTable.h"
#include "cli/printing/WatchedWork.h"
#include "cli/reading/Failure.h"
#include "cli/reading/RuleFiles.h"
#include "platform/Paths.h"
#include "platform/ReplacedFile.h"
#include "shared/BillFiles.h"
#include "shared/Outcomes.h"
#include "shared/PricingText.h"

#include <memory>

using namespace Qt::StringLiterals;

namespace cli {

namespace {

/// How many components the terminal shows of those that somebody should look at.
constexpr qsizetype ToldShown = 40;

enum class Form { Terminal, TerminalJson, Workbook, Csv, Json };

/// What is written, as the options tell.
Form FormOf(const Arguments& arguments)
{
    const CString path = arguments.Value(u"output"_s);
    if (path.isEmpty()) return arguments.Has(u"json"_s) ? Form::TerminalJson : Form::Terminal;
    if (arguments.Has(u"json"_s)) throw UsageError(u"--json 和 -o 不能一起用，写成文件请用 -o 文件.json"_s);
    if (path.endsWith(u".xlsx"_s, Qt::CaseInsensitive)) return Form::Workbook;
    if (path.endsWith(u".json"_s, Qt::CaseInsensitive)) return Form::Json;
    if (!path.endsWith(u".csv"_s, Qt::CaseInsensitive))
        throw UsageError(u"-o 的文件名要以 .xlsx、.csv 或 .json 结尾：%1"_s.arg(path));
    if (arguments.Has(u"compare"_s)) throw UsageError(u"--compare 的结果写不进 CSV，请用 .xlsx 或 .json"_s);
    return Form::Csv;
}

rules::TakeoffJob JobOf(const Arguments& arguments, const CString& file, const Session& session)
{
    rules::TakeoffJob job = JobFor(ResolvePath(arguments.Positional()[0]), file, session);
    job.sheet = arguments.Value(u"sheet"_s);
    job.groupBy = arguments.Value(u"by"_s).split(u',', Qt::SkipEmptyParts);
    return job;
}

/// The components that somebody should look at, the first of them in words.
class ToldTable
{
public:
    void Take(const rules::PricedRow& priced)
    {
        if (m_count >= ToldShown && priced.result.outcome == rules::Outcome::OnDefault) {
            ++m_count; // why it is there is not worked out any more
            return;
        }
        const CStringArray told = shared::ToldOf(priced.row, priced.component, priced.result, priced.builder);
        if (told.isEmpty() || m_count++ >= ToldShown) return;
        m_table.AddRow({u"第 %1 行"_s.arg(priced.row.line), priced.row.id.toString(),
                        shared::OutcomeText(priced.result.outcome), told.join(u'；')});
    }

    CString Text() const
    {
        if (m_count == 0) return {};
        CString text = u"\n需要核对的构件：\n"_s + m_table.ToText(2);
        if (m_count > ToldShown)
            text += u"  另有 %1 个，全部见工作簿（-o 清单.xlsx）。\n"_s.arg(m_count - ToldShown);
        return text;
    }

private:
    TextTable m_table;
    qsizetype m_count = 0;
};

void WriteJsonFile(const CString& path, const CString& json)
{
    platform::ReplacedFile file(path);
    file.Write(json.toUtf8());
    file.Commit();
}

/// What the terminal shows of a bill, or of what changes in it.
CString TerminalText(const rules::TakeoffPricing& pricing, const ToldTable& told, const BillChange* change)
{
    if (change != nullptr) return ChangeText(*change, pricing);
    const rules::Bill& bill = pricing.Result();
    return BillTable(bill, pricing.Job().facts.mode, pricing.Job().groupBy) + told.Text() + u'\n' +
           shared::TotalsText(bill.totals) + u'\n';
}

CString JsonText(rules::TakeoffPricing& pricing, BillChange* change, const embedded::Progress& progress)
{
    return change != nullptr ? ChangeJson(*change, pricing, progress) : BillJson(pricing, progress);
}

/// Prices the table and writes what was asked for; gives what the terminal shows.
CString Work(const rules::TakeoffJob& job, Form form, const CString& target, BillChange* change)
{
    WatchedWork work;
    const embedded::Progress progress = work.Progress();
    rules::TakeoffPricing pricing(job);
    ToldTable told;
    const auto take = [&](const rules::PricedRow& priced) { told.Take(priced); };
    const auto begin = [&] { told = {}; };
    if (change != nullptr)
        PriceBoth(pricing, *change, progress, take, begin);
    else
        pricing.Price(shared::WatchFor(progress, take, begin));
    const CString totals = shared::TotalsText(pricing.Result().totals) + u'\n';
    const CString written = u"已写出：%1\n"_s.arg(platform::ToNative(target));
    switch (form) {
    case Form::Terminal:
        return TerminalText(pricing, told, change);
    case Form::TerminalJson:
        return JsonText(pricing, change, progress);
    case Form::Csv:
        shared::WriteBillCsv(target, pricing.Result(), job);
        return told.Text() + totals + written;
    case Form::Workbook:
        shared::WriteBillWorkbook(target, pricing, progress, [&](tables::TableWriter& writer) {
            if (change != nullptr) PutChangeSheets(writer, *change, pricing, progress);
        });
        break;
    case Form::Json:
        WriteJsonFile(target, JsonText(pricing, change, progress));
        break;
    }
    return (change != nullptr ? ChangeText(*change, pricing) : totals) +
           written; // the rest stands in the file
}

/// The second configuration; nothing when there is nothing to compare with.
std::unique_ptr<BillChange> ChangeOf(const Arguments& arguments, const CString& file,
                                     const rules::TakeoffJob& job, const Session& session)
{
    if (!arguments.Has(u"compare"_s)) return nullptr;
    const CString other = ChooseRuleFile(arguments.Value(u"compare"_s));
    CheckRuleFile(other);
    return std::make_unique<BillChange>(job, ReadPricingRules(other, session), platform::ToNative(file),
                                        platform::ToNative(other));
}

} // namespace

CommandInfo ApplyCommand::Describe()
{
    CommandInfo info;
    info.name = u"apply"_s;
    info.syntax =
        u"TABLE [--sheet NAME] [-o OUT] [--by COLUMN] [--json] [--config FILE] [--compare FILE] [--force]"_s;
    info.summary = u"按规则给构件表套价，得出工程量清单"_s;
    info.description =
        u"TABLE 是构件表（CSV、XLSX 或 ODS），一行一个构件，各列见手册 docs/takeoff.md。\n"
        "不写 -o 时在终端列出清单和需要核对的构件。OUT 以 .xlsx 结尾时写成工作簿：工程量清单、每个构件\n"
        "套的规则和清单、未套价和需要核对的构件；以 .csv 结尾时只写清单；以 .json 结尾时写成 JSON。\n"
        "--compare 用另一个配置再套一遍，列出哪些构件、哪些清单行会变；写成工作簿时多出两个工作表。\n"
        "每个构件或者已套价，或者套默认规则，或者未套价，三者之和程序会核对。Ctrl+C 取消，不留文件。"_s;
    info.minPositional = info.maxPositional = 1;
    info.options = {SheetOption(),
                    OutputOption(u"写到这个文件：.xlsx、.csv 或 .json"_s),
                    {u"by"_s, u"COLUMN"_s, u"按这一列分开列清单；几列之间用逗号"_s, {}},
                    {u"json"_s, {}, u"在终端以 JSON 输出，写法见手册 docs/json.md"_s, {}},
                    PricingConfigOption(),
                    {u"compare"_s, u"FILE"_s, u"与这个规则文件或配置比较"_s, {}},
                    ForceOption()};
    return info;
}

ApplyCommand::ApplyCommand() : Command(Describe()) {}

void ApplyCommand::Run(const Arguments& arguments) const
{
    const Form form = FormOf(arguments);
    const CString target = OutputFile(arguments);
    const Session session(arguments);
    const CString file = PricingFile(arguments);
    const rules::TakeoffJob job = JobOf(arguments, file, session);
    const std::unique_ptr<BillChange> change = ChangeOf(arguments, file, job, session);
    CString text;
    try {
        text = Work(job, form, target, change.get());
    } catch (const embedded::Cancelled&) {
        throw Refusal(u"已取消，没有写出"_s);
    }
    WriteText(text);
}

} // namespace cli
