#include "cli/commands/rules/MergeCommand.h"

#include "cli/printing/Output.h"
#include "cli/reading/Failure.h"
#include "cli/reading/Overwriting.h"
#include "cli/reading/RuleFiles.h"
#include "cli/rulefiles/ConflictAnswers.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "rules/compare/DifferenceText.h"
#include "rules/document/RuleWriter.h"
#include "rules/merge/Merge.h"
#include "rules/model/Snapshot.h"
#include "shared/RuleFileMerge.h"
#include "xml/Error.h"

#include <QtCore/QFileInfo>

#include <algorithm>
#include <optional>
#include <vector>

using namespace Qt::StringLiterals;

namespace cli {

namespace {

using rules::Side;

/// A state of the rule file.
struct State
{
    CString path;
    QByteArray bytes;
    rules::ConfigurationPtr rules;
    rules::FileStructure structure;
};

State ReadState(const Arguments& arguments, qsizetype word, bool mayBeEmpty)
{
    State state{NamedRuleFile(arguments, arguments.Positional()[word]), {}, nullptr, {}};
    const CString name = platform::ToNative(state.path);
    CString reason;
    const auto bytes = platform::Files().Read(state.path, &reason);
    if (!bytes) throw Refusal(u"%1：%2"_s.arg(name, reason));
    state.bytes = *bytes;
    if (mayBeEmpty && state.bytes.isEmpty()) {
        // What version control hands over where both sides have made the file.
        state.rules = std::make_shared<const rules::Configuration>(std::vector<rules::Specialty>());
        return state;
    }
    CheckRuleFile(state.path);
    state.rules = rules::ReadRules(state.bytes, reason, &state.structure);
    if (!state.rules) throw Refusal(u"%1：%2"_s.arg(name, reason));
    return state;
}

/// An answer for each conflict. Raises `Refusal` when one has none.
std::vector<Side> Answers(const std::vector<rules::Conflict>& conflicts, std::optional<Side> preferred)
{
    std::vector<Side> answers = TellAndAnswer(conflicts, preferred);
    if (answers.size() == conflicts.size()) return answers;
    throw Refusal(u"有 %1 处冲突没有答案，什么也没有写（--prefer mine 或 --prefer theirs 一律取一边）"_s.arg(
        conflicts.size() - answers.size()));
}

/// The side that the result is to the byte, since the other one has done nothing, or the same; null where it
/// has to be made of both.
const State* WholeResult(const State& base, const State& mine, const State& theirs)
{
    if (mine.bytes == base.bytes) return &theirs;
    if (theirs.bytes == base.bytes || theirs.bytes == mine.bytes) return &mine;
    return nullptr;
}

/// Raises `Refusal` when something stands twice in the file, of which the first is read alone: the other one
/// would be lost, or come back in the place of a first one that went.
void RefuseRepeated(const State& state)
{
    const CString place = shared::RepeatedPlace(state.structure);
    if (place.isEmpty()) return;
    throw Refusal(u"%1：%2在文件中不止一段，只有第一段会被读到，合并会丢掉别的段；什么也没有写。"
                  "请在编辑器中打开并保存这个专业，只留第一段，或者手工删去多余的段"_s.arg(
                      platform::ToNative(state.path), place));
}

QByteArray MergedBytes(const State& base, const State& mine, const State& theirs,
                       const rules::Configuration& merged)
{
    if (const State* const whole = WholeResult(base, mine, theirs)) return whole->bytes;
    try {
        return rules::WriteRules(mine.bytes, merged);
    } catch (const xml::Error& error) {
        throw Refusal(u"合并的结果写不成规则文件：%1"_s.arg(CString::fromUtf8(error.what())));
    }
}

CString ResultText(const State& mine, const rules::Configuration& merged, const CString& target)
{
    return u"相对于 MINE："_s + rules::SummaryLines(rules::Compare(*mine.rules, merged)).join(u'\n') +
           u"\n已合并到：%1\n"_s.arg(platform::ToNative(target));
}

/// Where the result goes, and what is there: nothing where no file is.
struct Target
{
    CString path;
    std::optional<QByteArray> bytes;
};

/// Raises `Refusal` for a file other than MINE that stands there, unless it may be written over.
Target ReadTarget(const Arguments& arguments, const CString& mine)
{
    Target target{NamedRuleFile(arguments, arguments.Value(u"output"_s)), std::nullopt};
    if (!platform::Files().Exists(target.path)) return target;
    const QFileInfo file(platform::ToNative(target.path));
    const bool isMine = file.canonicalFilePath() == QFileInfo(platform::ToNative(mine)).canonicalFilePath();
    if (!isMine) RefuseToOverwrite(arguments, target.path);
    target.bytes = platform::Files().Read(target.path);
    CheckReplaceable(target.path);
    return target;
}

/// Raises `Refusal` when a file is not what it was any more.
void CheckUnchanged(const CString& path, const std::optional<QByteArray>& bytes)
{
    if (platform::Files().Read(path) != bytes)
        throw Refusal(u"%1 在合并期间变了，什么也没有写，请再合并一次"_s.arg(platform::ToNative(path)));
}

/// Writes the result, unless a file that it is made of or that it replaces has become another one meanwhile.
void WriteMerged(const Arguments& arguments, const Target& target, const std::vector<const State*>& states,
                 const QByteArray& bytes)
{
    // Version control merges in files of passing names, which no other program works on, and of which a
    // history would be of no use to anybody.
    const bool isNamedSo = target.path.endsWith(u".xml"_s, Qt::CaseInsensitive);
    const auto kept = isNamedSo ? KeepBeforeReplacing(arguments, target.path) : std::nullopt;
    for (const State* const state : states)
        CheckUnchanged(state->path, state->bytes);
    CheckUnchanged(target.path, target.bytes);
    platform::Files().Replace(target.path, bytes);
}

} // namespace

CommandInfo MergeCommand::Describe()
{
    CommandInfo info;
    info.name = u"merge"_s;
    info.syntax = u"BASE MINE THEIRS -o OUT [--prefer mine|theirs] [--force]"_s;
    info.summary = u"把从同一个规则文件改出来的两份合并成一份"_s;
    info.description =
        u"BASE 是两边共同的旧文件，MINE 和 THEIRS "
        u"是两边各自改过的文件。只有一边改、加、删或移动的规则照做，\n"
        "两边做得一样的只做一次；两边加的规则编号相同时其中一条换新编号。没有动过的专业，字节不变。\n"
        "其余是冲突：两边的样子列在标准错误上，全部有了答案才写 OUT，否则什么也不写，退出状态为 1。\n"
        "答案由 --prefer 给出；在终端上运行时逐个询问。OUT 可以就是 MINE，已有的\n"
        "其他文件要加 --force 才覆盖；工程的规则文件先留历史副本。\n"
        "BASE 可以是空文件。怎样用在 git 里，见手册 docs/version-control.md。"_s;
    info.minPositional = info.maxPositional = 3;
    info.options = {{u"output"_s, u"OUT"_s, u"写到这个文件"_s, u'o'},
                    PreferOption(),
                    {u"force"_s, {}, u"覆盖已有的 OUT"_s, {}}};
    info.needsProject = false;
    return info;
}

MergeCommand::MergeCommand() : Command(Describe()) {}

void MergeCommand::Run(const Arguments& arguments) const
{
    if (!arguments.Has(u"output"_s)) throw UsageError(u"缺少 -o OUT"_s);
    const std::optional<Side> preferred = PreferredSide(arguments);
    const State base = ReadState(arguments, 0, true);
    const State mine = ReadState(arguments, 1, false);
    const State theirs = ReadState(arguments, 2, false);
    if (WholeResult(base, mine, theirs) == nullptr)
        for (const State* const side : {&mine, &theirs})
            RefuseRepeated(*side);
    const Target target = ReadTarget(arguments, mine.path);
    const rules::Merge merge(*base.rules, *mine.rules, *theirs.rules);
    const rules::Configuration merged = merge.Result(Answers(merge.Conflicts(), preferred));
    WriteMerged(arguments, target, {&base, &mine, &theirs}, MergedBytes(base, mine, theirs, merged));
    WriteText(ResultText(mine, merged, target.path));
}

} // namespace cli
