#include "cli/commands/ShowCommand.h"

#include "cli/printing/Output.h"
#include "cli/printing/RuleJson.h"
#include "cli/printing/RuleText.h"
#include "cli/reading/Failure.h"
#include "cli/reading/RuleFiles.h"
#include "cli/reading/Session.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "rules/model/Snapshot.h"
#include "shared/RuleChanges.h"

using namespace Qt::StringLiterals;

namespace cli {

namespace {

void WriteJson(const std::vector<CategoryRules>& categories, const QString& file, const Session& session)
{
    JsonWriter json(JsonWriter::Style::Indented);
    json.BeginObject();
    json.Key(u"file").Text(file);
    json.Key(u"spec").Text(session.Spec());
    json.Key(u"mode").Text(session.IsBillMode() ? u"bill"_s : u"quota"_s);
    json.Key(u"categories").BeginArray();
    for (const CategoryRules& entry : categories) {
        json.BeginObject();
        json.Key(u"category").Text(entry.category.text);
        json.Key(u"specId").Number(entry.category.path.specId);
        json.Key(u"lMemberId").Number(entry.category.path.lMemberId);
        json.Key(u"sMemberId").Number(entry.category.path.sMemberId);
        json.Key(u"rules");
        WriteRules(json, entry.rules);
        json.EndObject();
    }
    json.EndArray().EndObject();
    WriteText(json.Result());
}

void WriteTables(const std::vector<CategoryRules>& categories, const QString& file, const Session& session,
                 bool fold)
{
    CString text = u"规则文件：%1\n专业：%2　模式：%3\n"_s.arg(
        file, session.Spec(), session.IsBillMode() ? u"清单模式"_s : u"定额模式"_s);
    int folded = 0;
    for (const CategoryRules& category : categories) {
        if (fold && HoldsNothing(category)) {
            ++folded;
        } else {
            text += u'\n' + RuleTable(category);
        }
    }
    if (folded > 0)
        text += u"\n另有 %1 个小类只有空的默认规则，未列出（用 --category 查看）。\n"_s.arg(folded);
    WriteText(text);
}

/// The rules of a file, whatever project it belongs to.
void ShowFile(const Arguments& arguments)
{
    for (const CString& option : {u"config"_s, u"spec"_s, u"category"_s, u"json"_s})
        if (arguments.Has(option)) throw UsageError(u"指明 FILE 时不能用 --%1"_s.arg(option));
    const CString path = ResolvePath(arguments.Positional()[0]);
    CString reason;
    const auto configuration = rules::ReadRuleFile(path, reason);
    if (!configuration) throw Refusal(u"%1：%2"_s.arg(platform::ToNative(path), reason));
    const CStringArray lines = shared::RuleLines(*configuration);
    WriteText(lines.isEmpty() ? u"没有规则\n"_s : lines.join(u'\n') + u'\n');
}

} // namespace

CommandInfo ShowCommand::Describe()
{
    CommandInfo info;
    info.name = u"show"_s;
    info.syntax = u"[FILE] [--config FILE] [--spec NAME] [--category TEXT] [--json]"_s;
    info.summary = u"显示规则文件中的规则"_s;
    info.description =
        u"显示一个专业的规则：每条规则的条件、清单和定额。只有空默认规则的小类不列出，\n"
        "只报个数；用 --category 指明类别时全部列出。规则文件读不了时指出行、列和原因。\n"
        "指明 FILE 时不需要工程：逐行列出这个规则文件各专业的规则，没有序号和编号，适合版本管理软件\n"
        "逐行比较（手册 docs/version-control.md）。"_s;
    info.maxPositional = 1;
    info.options = {{u"config"_s, u"FILE"_s, u"规则文件或配置名；不写时为工程的当前配置"_s, {}},
                    {u"spec"_s, u"NAME"_s, u"专业；不写时为工程的当前专业"_s, {}},
                    {u"category"_s, u"TEXT"_s, u"类别：给排水\\管道\\给水管、给排水\\管道或给水管"_s, {}},
                    {u"json"_s, {}, u"以 JSON 输出，写法见手册 docs/json.md"_s, {}}};
    return info;
}

ShowCommand::ShowCommand() : Command(Describe()) {}

void ShowCommand::Run(const Arguments& arguments) const
{
    if (!arguments.Positional().isEmpty()) return ShowFile(arguments);
    const Session session(arguments);
    const bool isNamed = arguments.Has(u"config"_s);
    const CString path = ChooseRuleFile(arguments.Value(u"config"_s));
    if (isNamed && !platform::Files().Exists(path)) CheckRuleFile(path);
    CheckForReading(path);
    CQdDeConfigPresenter presenter(isNamed ? path : CString());
    const CString filter = arguments.Value(u"category"_s);
    const auto categories = CollectRules(presenter, session.Spec(), filter);
    const QString file = platform::ToNative(path);
    if (arguments.Has(u"json"_s)) {
        WriteJson(categories, file, session);
    } else {
        WriteTables(categories, file, session, filter.isEmpty());
    }
}

} // namespace cli
