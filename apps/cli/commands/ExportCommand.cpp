#include "cli/commands/ExportCommand.h"

#include "cli/printing/Output.h"
#include "cli/printing/WatchedWork.h"
#include "cli/reading/Failure.h"
#include "cli/reading/RuleFiles.h"
#include "cli/reading/Session.h"
#include "cli/reading/TableKinds.h"
#include "cli/rulefiles/RuleTables.h"
#include "embedded/data/exchange/TableImport.h"
#include "embedded/data/sqlite/Progress.h"
#include "platform/Files.h"
#include "platform/Paths.h"

using namespace Qt::StringLiterals;

namespace cli {

namespace {

CommandInfo Describe()
{
    CommandInfo info;
    info.name = u"export"_s;
    info.syntax =
        TableKindWords() + u"|rules FILE|- [--library CODE] [--force] [--config FILE] [--category TEXT]"_s;
    info.summary = u"把工程的类别、属性、清单、定额等写成 import 能读的文件"_s;
    info.description =
        u"名称以 .xlsx 结尾的文件写成工作簿，其他的写成 UTF-8（带字节序标记）的 CSV 文件，表格软件可以\n"
        "直接打开。各列见手册 docs/data.md。\n"
        "未经修改的文件再用 ktqdde import 读入，什么也不变。“-”表示标准输出，写出的是 CSV，没有字节序标记。\n"
        "Ctrl+C 取消，已有的文件不变。\n"
        "rules 写出规则文件中的规则，一行一条，见手册 docs/rule-sheets.md；只能写到文件。"_s;
    info.minPositional = info.maxPositional = 2;
    info.options = {
        LibraryOption(),
        {u"force"_s, {}, u"覆盖已有的文件"_s, {}},
        RuleFileOption(),
        {u"category"_s, u"TEXT"_s, u"rules 的类别，例如 给排水\\管道 或 给水管；不写时为有规则的小类"_s, {}}};
    return info;
}

/// Gives the library whose table it is.
embedded::LibraryName Write(const Arguments& arguments, embedded::TableKind kind, const CString& library)
{
    WatchedWork work;
    try {
        return embedded::Export(NamedProject(arguments), kind, arguments.Positional()[1], library,
                                work.Progress());
    } catch (const embedded::Cancelled&) {
        throw Refusal(u"已取消，没有写出"_s);
    }
}

} // namespace

ExportCommand::ExportCommand() : Command(Describe()) {}

void ExportCommand::Run(const Arguments& arguments) const
{
    if (ConcernsRules(arguments)) return ExportRules(arguments);
    for (const CString& option : {u"config"_s, u"category"_s})
        if (arguments.Has(option)) throw UsageError(u"--%1 只用于 rules"_s.arg(option));
    const embedded::TableKind kind = NamedTableKind(arguments);
    const CString library = arguments.Value(u"library"_s);
    if (arguments.Positional()[1] == u"-")
        return WriteText(embedded::ExportText(NamedProject(arguments), kind, library));
    const CString path = ResolvePath(arguments.Positional()[1]);
    if (platform::Files().Exists(path) && !arguments.Has(u"force"_s))
        throw Refusal(u"%1 已经存在，覆盖请加 --force"_s.arg(platform::ToNative(path)));
    const auto kept = KeepBeforeReplacing(arguments, path);
    const embedded::LibraryName written = Write(arguments, kind, library);
    WriteText(u"已写出：%1\n"_s.arg(platform::ToNative(path)));
    if (!written.code.isEmpty()) WriteText(u"库：%1 %2\n"_s.arg(written.code, written.name));
}

} // namespace cli
