#include "cli/commands/ImportCommand.h"

#include "cli/printing/Output.h"
#include "cli/printing/WatchedWork.h"
#include "cli/reading/Failure.h"
#include "cli/reading/Session.h"
#include "cli/reading/TableKinds.h"
#include "cli/rulefiles/RuleTables.h"
#include "embedded/data/engine/Error.h"
#include "embedded/data/exchange/TableImport.h"
#include "platform/Console.h"

using namespace Qt::StringLiterals;

namespace cli {

namespace {

embedded::ImportReport RunImport(const Arguments& arguments)
{
    WatchedWork work;
    try {
        return embedded::Import(NamedProject(arguments), NamedTableKind(arguments), arguments.Positional()[1],
                                {arguments.Has(u"replace"_s), arguments.Value(u"library"_s),
                                 arguments.Value(u"sheet"_s), arguments.Has(u"dry-run"_s)},
                                work.Progress());
    } catch (const embedded::Error& error) {
        throw Refusal(error.Message() + u"；原数据没有变"_s);
    }
}

CString Complaint(const embedded::RefusedRow& row)
{
    return row.line > 0 ? u"第 %1 行：%2\n"_s.arg(row.line).arg(row.reason) : row.reason + u'\n';
}

CString Summary(const embedded::ImportReport& report)
{
    const CString text = report.stored
                             ? u"已导入 %1 行：新增 %2，修改 %3，去掉 %4\n"_s
                             : u"只是试导入，什么也没有改。会导入 %1 行：新增 %2，修改 %3，去掉 %4\n"_s;
    return text.arg(report.rows).arg(report.added).arg(report.changed).arg(report.removed);
}

} // namespace

CommandInfo ImportCommand::Describe()
{
    CommandInfo info;
    info.name = u"import"_s;
    info.syntax = TableKindWords() +
                  u"|rules FILE [--sheet NAME] [--library CODE] [--replace] [--config FILE] [--dry-run]"_s;
    info.summary = u"把自己的类别、属性、清单、定额等导入工程"_s;
    info.description =
        u"FILE 是 UTF-8 或 GB18030 的 CSV 文件，或者 .xlsx、.ods 工作簿，第一行是列名，\n"
        "各列见手册 docs/data.md：\n"
        "  catalog     专业、大类和小类\n"
        "  attributes  小类的属性和它们的值\n"
        "  bill        清单库\n"
        "  quota       定额库\n"
        "  guide       清单项套哪些定额\n"
        "  calc        计算项目和计算规则\n"
        "  libraries   有哪些清单库和定额库\n"
        "  rules       规则，一行一条，见手册 "
        "docs/rule-sheets.md：表中出现的小类，规则改成表里的各行；列出\n"
        "              哪些规则变了，--dry-run 只列出会变的、不写入\n"
        "同一编号（名称、代码）的行被修改，新的加在后面；--replace 则以文件代替整个表。\n"
        "有一行被拒绝就什么也不导入，被拒绝的各行连同原因写在标准错误上。Ctrl+C 取消，原数据不变。\n"
        "改了哪些原有的行、去掉了哪些，一一写出来；--dry-run 只写这些，什么也不导入。\n"
        "想先留一份原数据，用 ktqdde export。"_s;
    info.minPositional = info.maxPositional = 2;
    info.options = {{u"sheet"_s, u"NAME"_s, u"工作簿中的工作表；不写时为第一个"_s, {}},
                    LibraryOption(),
                    {u"replace"_s, {}, u"以文件代替整个表"_s, {}},
                    RuleFileOption(),
                    {u"dry-run"_s, {}, u"只说会怎样，什么也不导入"_s, {}}};
    return info;
}

ImportCommand::ImportCommand() : Command(Describe()) {}

void ImportCommand::Run(const Arguments& arguments) const
{
    if (ConcernsRules(arguments)) return ImportRules(arguments);
    if (arguments.Has(u"config"_s)) throw UsageError(u"--config 只用于 rules"_s);
    const embedded::ImportReport report = RunImport(arguments);
    if (report.cancelled) throw Refusal(u"已取消，原数据没有变"_s);
    for (const embedded::RefusedRow& row : report.refused)
        platform::WriteErr(Complaint(row));
    if (!report.refused.isEmpty())
        throw Refusal(u"共 %1 处被拒绝，什么也没有导入，原数据没有变"_s.arg(report.refused.size()));
    CString text = Summary(report);
    if (!report.library.code.isEmpty())
        text += u"库：%1 %2\n"_s.arg(report.library.code, report.library.name);
    for (const CString& note : report.notes)
        text += note + u'\n';
    for (const CString& row : report.changedRows)
        text += u"修改 "_s + row + u'\n';
    for (const CString& row : report.removedRows)
        text += u"去掉 "_s + row + u'\n';
    WriteText(text);
}

} // namespace cli
