#include "cli/commands/ApplyCommand.h"

#include "cli/pricing/BillFiles.h"
#include "cli/pricing/BillLines.h"
#include "cli/pricing/PricingJson.h"
#include "cli/pricing/PricingRules.h"
#include "cli/pricing/PricingText.h"
#include "cli/printing/Output.h"
#include "cli/printing/TextTable.h"
#include "cli/printing/WatchedWork.h"
#include "cli/reading/Failure.h"
#include "cli/reading/RuleFiles.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "platform/ReplacedFile.h"

using namespace Qt::StringLiterals;

namespace cli {

namespace {

/// How many components the terminal shows of those that somebody should look at.
constexpr qsizetype ToldShown = 40;

CommandInfo Describe()
{
    CommandInfo info;
    info.name = u"apply"_s;
    info.syntax = u"TABLE [--sheet NAME] [-o OUT] [--by COLUMN] [--config FILE] [--force]"_s;
    info.summary = u"按规则给构件表套价，得出工程量清单"_s;
    info.description =
        u"TABLE 是构件表（CSV、XLSX 或 ODS），一行一个构件，各列见手册 docs/takeoff.md。\n"
        "不写 -o 时在终端列出清单和需要核对的构件。OUT 以 .xlsx 结尾时写成工作簿：工程量清单、每个构件\n"
        "套的规则和清单、未套价和需要核对的构件；以 .csv 结尾时只写清单；以 .json 结尾时写成 JSON。\n"
        "每个构件或者已套价，或者套默认规则，或者未套价，三者之和程序会核对。Ctrl+C 取消，不留文件。"_s;
    info.minPositional = info.maxPositional = 1;
    info.options = {{u"sheet"_s, u"NAME"_s, u"工作簿中的工作表；不写时为第一个"_s, {}},
                    {u"output"_s, u"OUT"_s, u"写到这个文件：.xlsx、.csv 或 .json"_s, u'o'},
                    {u"by"_s, u"COLUMN"_s, u"按这一列分开列清单；几列之间用逗号"_s, {}},
                    PricingConfigOption(),
                    {u"force"_s, {}, u"覆盖已有的 OUT"_s, {}}};
    return info;
}

enum class Form { Terminal, Workbook, Csv, Json };

Form FormOf(const CString& path)
{
    if (path.isEmpty()) return Form::Terminal;
    if (path.endsWith(u".xlsx"_s, Qt::CaseInsensitive)) return Form::Workbook;
    if (path.endsWith(u".csv"_s, Qt::CaseInsensitive)) return Form::Csv;
    if (path.endsWith(u".json"_s, Qt::CaseInsensitive)) return Form::Json;
    throw UsageError(u"-o 的文件名要以 .xlsx、.csv 或 .json 结尾：%1"_s.arg(path));
}

CString TargetOf(const Arguments& arguments)
{
    const CString named = arguments.Value(u"output"_s);
    if (named.isEmpty()) return {};
    const CString path = ResolvePath(named);
    if (platform::Files().Exists(path) && !arguments.Has(u"force"_s))
        throw Refusal(u"%1 已经存在，覆盖请加 --force"_s.arg(platform::ToNative(path)));
    return path;
}

TakeoffJob JobOf(const Arguments& arguments, const Session& session)
{
    TakeoffJob job = JobFor(ResolvePath(arguments.Positional()[0]), PricingFile(arguments), session);
    job.sheet = arguments.Value(u"sheet"_s);
    job.groupBy = arguments.Value(u"by"_s).split(u',', Qt::SkipEmptyParts);
    return job;
}

/// The components that somebody should look at, the first of them in words.
class ToldTable
{
public:
    void Take(const PricedRow& priced)
    {
        if (m_count >= ToldShown && priced.result.outcome == rules::Outcome::OnDefault) {
            ++m_count; // why it is there is not worked out any more
            return;
        }
        const CStringArray told = ToldOf(priced.row, priced.component, priced.result, priced.builder);
        if (told.isEmpty() || m_count++ >= ToldShown) return;
        m_table.AddRow({u"第 %1 行"_s.arg(priced.row.line), priced.row.id, OutcomeText(priced.result.outcome),
                        told.join(u'；')});
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

/// Prices the table and writes what was asked for; gives what the terminal shows.
CString Work(const TakeoffJob& job, Form form, const CString& target)
{
    WatchedWork work;
    const embedded::Progress progress = work.Progress();
    ToldTable told;
    const rules::Bill bill = PriceTakeoff(job, progress, [&](const PricedRow& priced) { told.Take(priced); });
    const CString totals = TotalsText(bill.totals) + u'\n';
    const CString written = u"已写出：%1\n"_s.arg(platform::ToNative(target));
    switch (form) {
    case Form::Terminal:
        return BillTable(bill, job.facts.mode, job.groupBy) + told.Text() + u'\n' + totals;
    case Form::Csv:
        WriteBillCsv(target, bill, job);
        return told.Text() + totals + written;
    case Form::Workbook:
        WriteBillWorkbook(target, bill, job, progress);
        break;
    case Form::Json:
        WriteJsonFile(target, BillJson(bill, job, progress));
        break;
    }
    return totals + written; // what is to be told stands in the file
}

} // namespace

ApplyCommand::ApplyCommand() : Command(Describe()) {}

void ApplyCommand::Run(const Arguments& arguments) const
{
    const Form form = FormOf(arguments.Value(u"output"_s));
    const CString target = TargetOf(arguments);
    const Session session(arguments);
    const TakeoffJob job = JobOf(arguments, session);
    CString text;
    try {
        text = Work(job, form, target);
    } catch (const embedded::Cancelled&) {
        throw Refusal(u"已取消，没有写出"_s);
    }
    WriteText(text);
}

} // namespace cli
