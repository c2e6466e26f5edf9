#include "cli/commands/rules/WhereCommand.h"

#include "cli/printing/JsonWriter.h"
#include "cli/printing/Output.h"
#include "cli/printing/TextTable.h"
#include "cli/reading/Failure.h"
#include "cli/reading/RuleFiles.h"
#include "cli/reading/Session.h"
#include "platform/Console.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "rules/check/Where.h"
#include "rules/model/Snapshot.h"
#include "store/RuleFile.h"

#include <QtCore/QDir>

using namespace Qt::StringLiterals;

namespace cli {

namespace {

/// The rules of one configuration that give the item.
struct FileUses
{
    QString file;
    std::vector<rules::ItemUse> uses;
};

FileUses UsesIn(const CString& file, const CString& item)
{
    CString reason;
    const rules::ConfigurationPtr configuration = rules::ReadRuleFile(file, reason);
    if (!configuration) throw Refusal(u"%1：%2"_s.arg(platform::ToNative(file), reason));
    return {platform::ToNative(file), rules::UsesOf(*configuration, item)};
}

/// The names of the rule files in a folder, in their order: all that is found under such a name, also a pipe
/// or a link that leads nowhere, of which nobody else would tell that it cannot be read.
CStringArray NamesIn(const CString& folder)
{
    CStringArray names = platform::Files().FindFiles(folder, u".xml"_s);
    const QDir directory(platform::ToNative(folder));
    for (const QString& name : directory.entryList({u"*.xml"_s}, QDir::System | QDir::Hidden))
        if (platform::HasPathText(name)) names.append(name);
    names.sort();
    return names;
}

/// Of all configurations of the project. One that cannot be read does not hide the others; how many were not
/// is added to `unread`.
std::vector<FileUses> UsesEverywhere(const CString& item, int& unread)
{
    std::vector<FileUses> all;
    const CString folder = store::RuleFolder();
    for (const CString& name : NamesIn(folder)) {
        try {
            all.push_back(UsesIn(folder + u'\\' + name, item));
        } catch (const Refusal& refusal) {
            platform::WriteErr(CString::fromUtf8(refusal.what()) + u'\n');
            ++unread;
        }
    }
    return all;
}

CString ItemText(const rules::ItemUse& use)
{
    const CString text = use.number + u' ' + use.name;
    return use.billNumber.isEmpty() ? text : text + u"（清单 %1 下）"_s.arg(use.billNumber);
}

CString UsesText(const std::vector<FileUses>& all, const CString& item, bool areAllRead)
{
    CString text;
    std::size_t count = 0;
    for (const FileUses& file : all) {
        if (file.uses.empty()) continue;
        TextTable table;
        for (const rules::ItemUse& use : file.uses)
            table.AddRow({use.category, u"第 %1 条"_s.arg(use.position), ItemText(use), use.rule});
        text += file.file + u'\n' + table.ToText(2) + u'\n';
        count += file.uses.size();
    }
    if (count > 0) return text + u"共 %1 处\n"_s.arg(count);
    return (areAllRead ? u"没有规则套用“%1”\n"_s : u"读得了的配置中没有规则套用“%1”\n"_s).arg(item);
}

CString UsesJson(const std::vector<FileUses>& all)
{
    JsonWriter json(JsonWriter::Style::Indented);
    json.BeginObject().Key(u"uses").BeginArray();
    for (const FileUses& file : all)
        for (const rules::ItemUse& use : file.uses) {
            json.BeginObject();
            json.Key(u"file").Text(file.file);
            json.Key(u"category").Text(use.category);
            json.Key(u"rule").Number(use.position);
            json.Key(u"id").Number(use.ruleId);
            json.Key(u"text").Text(use.rule);
            json.Key(u"kind").Text(use.isBill ? u"bill"_s : u"quota"_s);
            json.Key(u"number").Text(use.number);
            json.Key(u"name").Text(use.name);
            json.Key(u"unit").Text(use.unit);
            json.Key(u"library").Text(use.library);
            if (!use.billNumber.isEmpty()) json.Key(u"below").Text(use.billNumber);
            json.EndObject();
        }
    json.EndArray().EndObject();
    return json.Result();
}

} // namespace

CommandInfo WhereCommand::Describe()
{
    CommandInfo info;
    info.name = u"where"_s;
    info.syntax = u"ITEM [--config FILE] [--json]"_s;
    info.summary = u"一个清单或定额项由哪些配置的哪些规则套用"_s;
    info.description =
        u"ITEM 是清单编号、去掉顺序码的清单编号，或者定额编号。\n"
        "不写 --config 时查找工程的全部配置；读不了的在标准错误中说明，其余照查，退出状态是 1。"_s;
    info.minPositional = 1;
    info.maxPositional = 1;
    info.options = {{u"config"_s, u"FILE"_s, u"只查这个规则文件或配置"_s, {}},
                    {u"json"_s, {}, u"以 JSON 输出，写法见手册 docs/json.md"_s, {}}};
    return info;
}

WhereCommand::WhereCommand() : Command(Describe()) {}

void WhereCommand::Run(const Arguments& arguments) const
{
    const CString item = arguments.Positional()[0].trimmed();
    if (item.isEmpty()) throw UsageError(u"缺少清单或定额编号"_s);
    const Session session(arguments);
    std::vector<FileUses> all;
    int unread = 0;
    if (arguments.Has(u"config"_s)) {
        const CString file = ChooseRuleFile(arguments.Value(u"config"_s));
        CheckForReading(file);
        all.push_back(UsesIn(file, item));
    } else {
        all = UsesEverywhere(item, unread);
    }
    WriteText(arguments.Has(u"json"_s) ? UsesJson(all) : UsesText(all, item, unread == 0));
    if (unread > 0) throw Refusal(u"有 %1 个配置读不了，没有查"_s.arg(unread));
}

} // namespace cli
