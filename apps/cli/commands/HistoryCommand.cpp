#include "cli/commands/HistoryCommand.h"

#include "cli/printing/Output.h"
#include "cli/printing/TextTable.h"
#include "cli/reading/Failure.h"
#include "cli/reading/RuleFiles.h"
#include "cli/reading/Session.h"
#include "cli/reading/TextFiles.h"
#include "platform/Console.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "platform/TimeText.h"
#include "rules/model/Snapshot.h"
#include "shared/ChangeText.h"
#include "shared/RuleChanges.h"

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace cli {

namespace {

using embedded::History;
using embedded::HistoryEntry;

const CString XmlOption = u"xml"_s;

/// Why the text is shown although the rules were asked for.
CString NoRules(const CString& what)
{
    return u"%1：不能作为规则文件读出，显示原文\n"_s.arg(what);
}

CArray<HistoryEntry> Listed(const History& history, const Arguments& arguments)
{
    const CString config = arguments.Value(u"config"_s);
    return config.isEmpty() ? history.ListAll()
                            : history.List(ResolveRuleFile(config, history.Project().RuleFolder()));
}

/// The copy that a word of the command line names. Where a rule file is named, too, a copy from the time when
/// that had another name is one of it, and not of the file that may have got the former name since.
HistoryEntry Named(const History& history, const Arguments& arguments, qsizetype word)
{
    const CString name = arguments.Positional()[word];
    const auto entries = Listed(history, arguments);
    const auto found = std::find_if(entries.begin(), entries.end(), [&](const HistoryEntry& entry) {
        return entry.id.compare(name, Qt::CaseInsensitive) == 0;
    });
    if (found != entries.end()) return *found;
    if (name != u"last") return history.Find(name);
    if (entries.isEmpty()) throw Refusal(u"还没有历史副本"_s);
    return entries.first();
}

void List(History& history, const Arguments& arguments)
{
    const auto entries = Listed(history, arguments);
    if (entries.isEmpty()) return WriteText(u"还没有历史副本。\n"_s);
    TextTable table;
    table.AddRow({u"编号"_s, u"时间"_s, u"字节"_s, u"规则文件"_s});
    for (const HistoryEntry& entry : entries) {
        table.AddRow({entry.id, platform::TimeText(entry.time), CString::number(history.Read(entry).size()),
                      platform::ToNative(entry.path)});
    }
    WriteText(table.ToText(0));
}

void Show(History& history, const Arguments& arguments)
{
    const HistoryEntry entry = Named(history, arguments, 1);
    const QByteArray bytes = history.Read(entry);
    CString reason;
    const auto configuration = arguments.Has(XmlOption) ? nullptr : rules::ReadRules(bytes, reason);
    if (configuration) {
        const CStringArray lines = shared::RuleLines(*configuration);
        return WriteText(lines.isEmpty() ? u"没有规则。\n"_s : lines.join(u'\n') + u'\n');
    }
    if (!arguments.Has(XmlOption)) platform::WriteErr(NoRules(entry.id));
    WriteText(TextOf(bytes, entry.id));
}

void Compare(History& history, const Arguments& arguments)
{
    const HistoryEntry first = Named(history, arguments, 1);
    const bool isPair = arguments.Positional().size() > 2;
    const CString secondName = isPair ? Named(history, arguments, 2).id : platform::ToNative(first.path);
    const QByteArray before = history.Read(first);
    const QByteArray after =
        isPair ? history.Read(Named(history, arguments, 2)) : platform::Files().ReadWhole(first.path);
    if (before == after) return WriteText(u"没有差别。\n"_s);
    const auto lines = arguments.Has(XmlOption) ? std::nullopt : shared::RuleChangeLines(before, after);
    if (lines) return WriteText(lines->join(u'\n') + u'\n');
    if (!arguments.Has(XmlOption)) platform::WriteErr(NoRules(first.id + u"、"_s + secondName));
    WriteText(shared::DescribeChanges(
        shared::CompareLines(TextOf(before, first.id).split(u'\n'), TextOf(after, secondName).split(u'\n'))));
}

void Restore(History& history, const Arguments& arguments)
{
    const HistoryEntry entry = Named(history, arguments, 1);
    const auto lock = LockRuleFiles(history, {entry.path});
    const auto replaced = history.Restore(entry);
    WriteText(
        u"已还原为 %1 的内容：%2\n"_s.arg(platform::TimeText(entry.time), platform::ToNative(entry.path)));
    if (replaced) WriteText(u"被替换的内容留有副本，编号 %1\n"_s.arg(replaced->id));
}

void Limit(History& history, const Arguments& arguments)
{
    if (arguments.Positional().size() > 1) {
        bool isNumber = false;
        const int limit = arguments.Positional()[1].toInt(&isNumber);
        if (!isNumber) throw UsageError(u"“%1”不是个数"_s.arg(arguments.Positional()[1]));
        history.SetLimit(limit);
    }
    WriteText(u"每个规则文件保留 %1 个副本\n"_s.arg(history.Limit()));
}

/// One thing that the command does, and how many words may follow its name.
struct Action
{
    QStringView name;
    int minWords;
    int maxWords;
    void (*run)(History&, const Arguments&);
};

constexpr Action Actions[] = {{u"list", 0, 0, List},
                              {u"show", 1, 1, Show},
                              {u"diff", 1, 2, Compare},
                              {u"restore", 1, 1, Restore},
                              {u"limit", 0, 1, Limit}};

const Action& ChooseAction(const CStringArray& words)
{
    const auto action = std::find_if(std::begin(Actions), std::end(Actions),
                                     [&](const Action& candidate) { return candidate.name == words[0]; });
    if (action == std::end(Actions)) throw UsageError(u"不认识的操作：%1"_s.arg(words[0]));
    const qsizetype count = words.size() - 1;
    if (count < action->minWords) throw UsageError(u"缺少参数"_s);
    if (count > action->maxWords) throw UsageError(u"多余的参数：%1"_s.arg(words.back()));
    return *action;
}

} // namespace

CommandInfo HistoryCommand::Describe()
{
    CommandInfo info;
    info.name = u"history"_s;
    info.syntax = u"list|show 编号|diff 编号 [编号]|restore 编号|limit [个数] [--config FILE] [--xml]"_s;
    info.summary = u"规则文件的历史副本：列出、显示、比较、还原"_s;
    info.description =
        u"每个会改写规则文件的命令事先都把原文件留一份副本，放在工程的 history 文件夹中。\n"
        "  list            列出副本，新的在前\n"
        "  show 编号       显示一个副本中的规则；--xml 显示文件的原文\n"
        "  diff 编号       副本与规则文件现在的内容比较，逐条规则说明；给两个编号时比较两个副本；\n"
        "                  --xml 逐行比较文件的原文\n"
        "  restore 编号    把副本写回规则文件；被替换的内容先留一份副本\n"
        "  limit [个数]    显示或设定每个规则文件保留几个副本，0 表示不再留副本\n"
        "编号见 list；last 表示最新的副本。--config 只看一个规则文件的副本。"_s;
    info.minPositional = 1;
    info.maxPositional = 3;
    info.options = {{u"config"_s, u"FILE"_s, u"规则文件或配置名；不写时为全部规则文件"_s, {}},
                    {u"xml"_s, {}, u"show 和 diff 显示文件的原文，而不是规则"_s, {}}};
    return info;
}

HistoryCommand::HistoryCommand() : Command(Describe()) {}

void HistoryCommand::Run(const Arguments& arguments) const
{
    const Action& action = ChooseAction(arguments.Positional());
    // Without the databases: the copies are wanted most when these are gone.
    const embedded::ProjectFolder folder(NamedProject(arguments));
    History history(folder);
    if (history.ListAll().isEmpty()) folder.RequireProject();
    action.run(history, arguments);
}

} // namespace cli
