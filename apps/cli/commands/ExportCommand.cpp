#include "cli/commands/ExportCommand.h"

#include "cli/commands/ExportRulesSql.h"
#include "cli/printing/Output.h"
#include "cli/printing/WatchedWork.h"
#include "cli/reading/Failure.h"
#include "cli/reading/Offices.h"
#include "cli/reading/Overwriting.h"
#include "cli/reading/RuleFiles.h"
#include "cli/reading/Session.h"
#include "cli/reading/TableKinds.h"
#include "cli/rulefiles/RuleTables.h"
#include "embedded/data/engine/Progress.h"
#include "embedded/data/exchange/TableImport.h"
#include "platform/Paths.h"

using namespace Qt::StringLiterals;

namespace cli {

namespace {

/// What chooses among rules, be they written as lines or as a query.
CArray<Option> RulesOptions()
{
    return {{u"config"_s, u"FILE"_s, u"规则的文件或配置名；不写时为工程的当前配置"_s, {}},
            {u"category"_s, u"TEXT"_s, u"只写这个类别的规则，例如 给排水\\管道\\给水管 或 给水管"_s, {}}};
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

/// For options that only some of the words behind `export` know.
void RefuseOptions(const Arguments& arguments, const CArray<Option>& options, const CString& users)
{
    for (const Option& option : options)
        if (arguments.Has(option.name)) throw UsageError(u"--%1 只用于 %2"_s.arg(option.name, users));
}

} // namespace

CommandInfo ExportCommand::Describe()
{
    CommandInfo info;
    info.name = u"export"_s;
    info.syntax =
        TableKindWords() + u"|rules|"_s + RulesSqlWord +
        u" [FILE|-] [--library CODE] [--config FILE] [--category TEXT] [--dialect NAME] [-o FILE] [--force]"_s;
    info.summary = u"把工程的类别、属性、清单、定额等写成 import 能读的文件，或把规则写成 SQL"_s;
    info.description =
        u"名称以 .xlsx 结尾的文件写成工作簿，其他的写成 UTF-8（带字节序标记）的 CSV 文件，表格软件可以\n"
        "直接打开。各列见手册 docs/data.md。\n"
        "未经修改的文件再用 ktqdde import 导入，什么也不变。“-”表示标准输出，写出的是 CSV，没有字节序标记。\n"
        "Ctrl+C 取消，已有的文件不变。\n"
        "rules 写出规则文件中的规则，一行一条，见手册 docs/rule-sheets.md；只能写到文件。\n"
        "rules-sql 把规则写成一条 SELECT，数据库用它给构件表的每个构件找出规则和清单、定额，结果与 apply\n"
        "相同。构件表的各列见手册 docs/rules-sql.md。"_s;
    info.minPositional = 1;
    info.maxPositional = 2;
    info.options = CArray<Option>{LibraryOption()} + RulesOptions() + RulesSqlOptions() +
                   CArray<Option>{{u"force"_s, {}, u"覆盖已有的文件"_s, {}}};
    return info;
}

ExportCommand::ExportCommand() : Command(Describe()) {}

void ExportCommand::Run(const Arguments& arguments) const
{
    if (arguments.Positional()[0] == RulesSqlWord) return ExportRulesSql(arguments);
    RefuseOptions(arguments, RulesSqlOptions(), RulesSqlWord);
    if (arguments.Positional().size() < 2) throw UsageError(u"缺少参数"_s);
    if (ConcernsRules(arguments)) return ExportRules(arguments);
    RefuseOptions(arguments, RulesOptions(), u"rules 和 "_s + RulesSqlWord);
    const embedded::TableKind kind = NamedTableKind(arguments);
    const CString library = arguments.Value(u"library"_s);
    if (arguments.Positional()[1] == u"-") {
        WriteText(embedded::ExportText(NamedProject(arguments), kind, library));
        return TellIfWithoutOffice(NamedProject(arguments));
    }
    const CString path = ResolvePath(arguments.Positional()[1]);
    RefuseToOverwrite(arguments, path);
    const auto kept = KeepBeforeReplacing(arguments, path);
    const embedded::LibraryName written = Write(arguments, kind, library);
    TellIfWithoutOffice(NamedProject(arguments)); // not before, for an interrupt ends what is watched alone
    WriteText(u"已写出：%1\n"_s.arg(platform::ToNative(path)));
    if (!written.code.isEmpty()) WriteText(u"库：%1 %2\n"_s.arg(written.code, written.name));
}

} // namespace cli
