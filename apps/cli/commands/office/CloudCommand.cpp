#include "cli/commands/office/CloudCommand.h"

#include "cli/commands/office/CloudListing.h"
#include "cli/printing/ComparisonJson.h"
#include "cli/printing/Output.h"
#include "cli/reading/Failure.h"
#include "cli/reading/RuleFiles.h"
#include "cli/reading/Session.h"
#include "cli/rulefiles/ConflictAnswers.h"
#include "embedded/data/project/CurrentConfiguration.h"
#include "platform/Console.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "rules/compare/DifferenceText.h"
#include "rules/model/Snapshot.h"
#include "shared/OfficeFiles.h"
#include "shared/OfficeText.h"
#include "shared/RuleChanges.h"

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace cli {

namespace {

using shared::OfficeFiles;

/// A number of a version. Raises `UsageError` for what is none.
int VersionOf(const CString& text)
{
    bool isNumber = false;
    const int version = text.toInt(&isNumber);
    if (!isNumber || version < 1) throw UsageError(u"“%1”不是版本号"_s.arg(text));
    return version;
}

std::optional<int> NamedVersion(const Arguments& arguments)
{
    if (!arguments.Has(u"version"_s)) return std::nullopt;
    return VersionOf(arguments.Value(u"version"_s));
}

/// One run of the command on a project that has an office.
struct Run
{
    const Arguments& arguments;
    OfficeFiles& files;
    CString configuration; ///< empty for `list`
    shared::AnswerConflicts answer;

    CString OfficeName() const { return files.Office().Name(); }
};

void List(const Run& run)
{
    const CArray<shared::OfficeEntry> entries = run.files.List();
    WriteText(run.arguments.Has(u"json"_s) ? EntryJson(entries, run.files.Office()) : EntryTable(entries));
}

void Log(const Run& run)
{
    const CArray<embedded::PublishedVersion> versions = run.files.Log(run.configuration);
    WriteText(run.arguments.Has(u"json"_s) ? LogJson(versions, run.configuration) : LogTable(versions));
}

void Fetch(const Run& run)
{
    const shared::FetchEnd end = run.files.Fetch(run.configuration, run.answer, NamedVersion(run.arguments));
    const CString text = shared::EndText(end, run.configuration, run.OfficeName());
    if (end.end == shared::FetchEnd::Conflicts) throw Refusal(text, InConflict);
    WriteText(text + u'\n');
}

/// Tells what came of publishing on standard output, or as the reason for which it was not done.
void Tell(const shared::PublishEnd& end, const CString& office)
{
    const CString text = shared::EndText(end, office);
    if (end.IsMerged()) WriteText(shared::JoinedText(*end.joined) + u'\n');
    if (end.IsDone()) return WriteText(text + u'\n');
    if (end.end == shared::PublishEnd::Waits) throw Refusal(text, Waiting);
    throw Refusal(text, end.end == shared::PublishEnd::Conflicts ? InConflict : Refused);
}

void Publish(const Run& run)
{
    Tell(run.files.Publish(run.configuration, run.arguments.Value(u"note"_s), run.answer), run.OfficeName());
}

void Withdraw(const Run& run)
{
    const shared::WithdrawEnd end = run.files.Withdraw(run.configuration);
    const CString text = shared::EndText(end, run.configuration);
    if (end == shared::WithdrawEnd::NoneWaits) throw Refusal(text);
    WriteText(text + u'\n');
}

void Restore(const Run& run)
{
    const auto version = NamedVersion(run.arguments);
    if (!version) throw UsageError(u"缺少 --version N"_s);
    Tell(run.files.Restore(run.configuration, *version), run.OfficeName());
}

void Remove(const Run& run)
{
    const bool isBack = run.arguments.Has(u"back"_s);
    if (isBack)
        run.files.BringBack(run.configuration);
    else
        run.files.Remove(run.configuration);
    WriteText((isBack ? u"已收回配置“%1”\n"_s : u"已从办公室移除配置“%1”，它的版本都还在\n"_s)
                  .arg(run.configuration));
}

/// A state of the configuration, and what it is called.
struct State
{
    CString name;
    QByteArray bytes;
};

State VersionState(const Run& run, int version)
{
    return {u"第 %1 版"_s.arg(version), run.files.Content(run.configuration, version)};
}

State LocalState(const Run& run)
{
    const CString path = run.files.FileOf(run.configuration);
    CheckRuleFile(path);
    return {platform::ToNative(path), platform::Files().ReadWhole(path)};
}

rules::ConfigurationPtr RulesOf(const State& state)
{
    CString reason;
    rules::ConfigurationPtr read = rules::ReadRules(state.bytes, reason);
    if (!read) throw Refusal(u"%1：%2"_s.arg(state.name, reason));
    return read;
}

void Compare(const Run& run)
{
    const CStringArray& words = run.arguments.Positional();
    const int first = words.size() > 2 ? VersionOf(words[2]) : run.files.LastVersion(run.configuration);
    const State before = VersionState(run, first);
    const State after = words.size() > 3 ? VersionState(run, VersionOf(words[3])) : LocalState(run);
    const rules::Comparison comparison = rules::Compare(*RulesOf(before), *RulesOf(after));
    if (!run.arguments.Has(u"json"_s))
        return WriteText(shared::RuleChangeLines(before.bytes, after.bytes).value().join(u'\n') + u'\n');
    JsonWriter json(JsonWriter::Style::Indented);
    json.BeginObject();
    json.Key(u"from").Text(before.name);
    json.Key(u"to").Text(after.name);
    WriteComparison(json, comparison);
    json.EndObject();
    WriteText(json.Result());
}

/// One thing that the command does: how many words may follow its name, and which options go with it.
struct Action
{
    QStringView name;
    int minWords;
    int maxWords;
    CStringArray options;
    void (*run)(const Run&);
    bool sendsFirst = true; ///< what waits
};

const Action& ChooseAction(const CStringArray& words)
{
    static const Action actions[] = {{u"list", 0, 0, {u"json"_s}, List},
                                     {u"fetch", 0, 1, {u"version"_s, u"prefer"_s}, Fetch},
                                     {u"publish", 0, 1, {u"note"_s, u"prefer"_s}, Publish},
                                     {u"withdraw", 1, 1, {}, Withdraw, false},
                                     {u"log", 1, 1, {u"json"_s}, Log},
                                     {u"diff", 1, 3, {u"json"_s}, Compare},
                                     {u"restore", 1, 1, {u"version"_s}, Restore},
                                     {u"remove", 1, 1, {u"back"_s}, Remove}};
    const auto action = std::find_if(std::begin(actions), std::end(actions),
                                     [&](const Action& candidate) { return candidate.name == words[0]; });
    if (action == std::end(actions)) throw UsageError(u"不认识的操作：%1"_s.arg(words[0]));
    const qsizetype count = words.size() - 1;
    if (count < action->minWords) throw UsageError(u"缺少配置名"_s);
    if (count > action->maxWords) throw UsageError(u"多余的参数：%1"_s.arg(words.back()));
    return *action;
}

void CheckOptions(const Action& action, const Arguments& arguments)
{
    for (const CString& option : {u"note"_s, u"version"_s, u"prefer"_s, u"back"_s, u"json"_s})
        if (arguments.Has(option) && !action.options.contains(option))
            throw UsageError(u"--%1 不用于 %2"_s.arg(option, action.name));
}

/// Tells conflicts and asks, unless one side is preferred.
shared::AnswerConflicts AnswerWith(std::optional<rules::Side> preferred)
{
    return [preferred](
               const std::vector<rules::Conflict>& conflicts) -> std::optional<std::vector<rules::Side>> {
        std::vector<rules::Side> answers = TellAndAnswer(conflicts, preferred);
        if (answers.size() != conflicts.size()) return std::nullopt;
        return answers;
    };
}

/// What waits goes first, and is told beside what was asked for.
void SendWaiting(OfficeFiles& files)
{
    for (const shared::SentPublication& sent : files.SendWaiting()) {
        if (sent.end.IsMerged()) platform::WriteErr(shared::JoinedText(*sent.end.joined) + u'\n');
        platform::WriteErr(shared::EndText(sent, files.Office().Name()) + u'\n');
    }
}

CString NamedConfiguration(const CStringArray& words)
{
    if (words[0] == u"list") return {};
    if (words.size() > 1) return words[1];
    return platform::BeforeLastStop(platform::FileNameOf(CurrentFile()));
}

} // namespace

CommandInfo CloudCommand::Describe()
{
    CommandInfo info;
    info.name = u"cloud"_s;
    info.syntax = u"list|fetch|publish|withdraw|log|diff|restore|remove [NAME] [版本 [版本]] [--note TEXT] "
                  "[--version N] [--prefer mine|theirs] [--back] [--json]"_s;
    info.summary = u"办公室发布的配置：列出、取来、发布、撤回、比较、还原"_s;
    info.description =
        u"工程属于一个办公室时（ktqdde init --office），配置由办公室发布，每次发布是一个版本，永远留着。\n"
        "  list              列出办公室的和本地的配置，本地的是不是最新的一版\n"
        "  fetch [NAME]      取来最新的一版，或 --version N；本地有修改时按规则合并\n"
        "  publish [NAME]    发布本地的配置；别人其间也发布过时，按规则合并后发布合并的结果，\n"
        "                    并写出从别人的版本并入了什么\n"
        "  withdraw NAME     等着的不再发布；本地文件不变\n"
        "  log NAME          列出全部版本：时间、发布人、工程、说明\n"
        "  diff NAME [版本 [版本]]  比较两个版本；给一个时与本地文件比，不给时是最新的一版与本地文件\n"
        "  restore NAME --version N  把第 N 版作为新的一版发布并取来\n"
        "  remove NAME       从办公室的列表中移除，版本都留着；--back 收回\n"
        "NAME 是配置名；fetch 和 publish 不写时是当前配置。本地文件改动以前先留历史副本。\n"
        "冲突写在标准错误上，由 --prefer 回答，在终端上逐个询问；没有答案就什么也不发布、不改动，退出状态为 "
        "3。\n"
        "办公室连不上时，publish 留着等连上再发，退出状态为 4；以后任何一个 cloud 命令都先发等着的，\n"
        "withdraw 除外；取来一版以后，等着的也不再发布。\n"
        "没有办公室的工程，共用的配置放在一个文件夹里，用编辑器的“云盘”窗口取用。"_s;
    info.minPositional = 1;
    info.maxPositional = 4;
    info.options = {{u"note"_s, u"TEXT"_s, u"publish 的说明"_s, {}},
                    {u"version"_s, u"N"_s, u"fetch 和 restore 的版本"_s, {}},
                    PreferOption(),
                    {u"back"_s, {}, u"remove 反过来：收回已移除的"_s, {}},
                    {u"json"_s, {}, u"list、log、diff 以 JSON 输出，写法见手册 docs/json.md"_s, {}}};
    return info;
}

CloudCommand::CloudCommand() : Command(Describe()) {}

void CloudCommand::Run(const Arguments& arguments) const
{
    const CStringArray& words = arguments.Positional();
    const Action& action = ChooseAction(words);
    CheckOptions(action, arguments);
    const auto preferred = PreferredSide(arguments);
    Session session(arguments);
    if (session.Host().Office() == nullptr)
        throw Refusal(
            u"这个工程不在办公室中。没有办公室时，共用的配置放在一个文件夹里，用编辑器的“云盘”窗口取用；\n"
            "怎样设立办公室见手册 docs/office.md，工程用 ktqdde init --office 加入"_s);
    OfficeFiles files(session.Host(), TellWhoHolds());
    if (action.sendsFirst) SendWaiting(files);
    action.run({arguments, files, NamedConfiguration(words), AnswerWith(preferred)});
}

} // namespace cli
