#include "cli/reading/RuleFiles.h"

#include "cli/reading/Failure.h"
#include "cli/reading/Session.h"
#include "embedded/data/project/CurrentConfiguration.h"
#include "embedded/data/project/ProjectFolder.h"
#include "host/NvKtDataMng.h"
#include "host/RuleFilePlaces.h"
#include "platform/Console.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "shared/RuleFileNames.h"
#include "shared/RuleFileState.h"
#include "store/RuleFile.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace cli {

namespace {

using embedded::CurrentConfiguration;

/// `path` is that of the configuration's rule file. One that stands there may have any name.
void CheckName(const CString& name, const CString& path)
{
    if (CurrentConfiguration::CanNameFile(name) && platform::Files().Exists(path)) return;
    if (!CurrentConfiguration::IsPossibleName(name))
        throw Refusal(
            u"“%1”不能用作配置名：1 到 %2 个字符，首尾没有空格，不含 / \\ : * ? \" < > | 和控制字符"_s.arg(
                name, CString::number(CurrentConfiguration::LongestName)));
    if (platform::IsTooLongFileName(platform::FileNameOf(path)))
        throw Refusal(u"“%1”不能用作配置名：文件名连“.xml”在内最多 255 字节，一个汉字占 3 字节"_s.arg(name));
}

/// The history that a file belongs to which no open project has to do with.
std::optional<embedded::History> HistoryOf(const Arguments& arguments, const CString& path)
{
    if (const auto named = FindNamedProject(arguments))
        return embedded::History(embedded::ProjectFolder(*named));
    const QFileInfo file(platform::ToNative(path));
    for (QDir folder(file.absolutePath());; folder = QDir(QFileInfo(folder.path()).path())) {
        if (embedded::IsProject(folder.path()))
            return embedded::History(embedded::ProjectFolder(folder.path()));
        if (folder.isRoot()) return std::nullopt;
    }
}

/// How to get the newest copy of a rule file back that can be read; empty when there is none.
CString WayBack(const CString& path, const embedded::History& history)
{
    const auto entries = history.List(path);
    const auto readable = std::find_if(entries.begin(), entries.end(), [](const auto& entry) {
        return shared::ExamineRuleFile(entry.copy).IsSafe();
    });
    if (readable == entries.end()) return {};
    return u"\n最近一份读得了的历史副本可以这样还原：ktqdde history restore %1"_s.arg(readable->id);
}

CString RepeatedText(const shared::RuleFileState& state)
{
    return u"%1：%2"_s.arg(platform::ToNative(state.path), state.Describe());
}

/// The reason why a wrapped file cannot be read as XML would send its user after damage that there is not.
void RefuseIfWrapped(const shared::RuleFileState& state)
{
    if (state.kind == shared::RuleFileKind::Wrapped)
        throw Refusal(u"%1：%2；里面的规则文件用 ktqdde unwrap 取出"_s.arg(platform::ToNative(state.path),
                                                                           state.Describe()));
}

CString InRuleFolder(const CString& name)
{
    return host::RuleFileIn(store::RuleFolder(), name);
}

} // namespace

CString ResolvePath(const QString& nativePath)
{
    if (nativePath.isEmpty() || nativePath.contains(QChar::Null) || !platform::HasPathText(nativePath))
        throw Refusal(u"“%1”不能用作文件路径"_s.arg(nativePath));
    return platform::FromNative(nativePath);
}

CString ResolveRuleFile(const QString& text, const CString& ruleFolder)
{
    if (shared::NamesPath(text)) return ResolvePath(text);
    CString native = ResolvePath(text);
    CString configuration = host::RuleFileIn(ruleFolder, text);
    if (!platform::Files().Exists(configuration) && platform::Files().Exists(native)) return native;
    CheckName(text, configuration);
    return configuration;
}

CString ResolveRuleFile(const QString& text)
{
    return ResolveRuleFile(text, store::RuleFolder());
}

CString NamedRuleFile(const Arguments& arguments, const QString& text)
{
    const auto project = FindNamedProject(arguments);
    return project ? ResolveRuleFile(text, embedded::ProjectFolder(*project).RuleFolder())
                   : ResolvePath(text);
}

CString ConfigurationPath(const CString& name)
{
    CString path = InRuleFolder(name);
    CheckName(name, path);
    return path;
}

Option OverwriteOption()
{
    return {u"force"_s, {}, u"覆盖已有的同名配置"_s, {}};
}

CString TargetConfiguration(const Arguments& arguments)
{
    const CString name = arguments.Positional()[0];
    CString path = ConfigurationPath(name);
    if (platform::Files().Exists(path) && !arguments.Has(OverwriteOption().name))
        throw Refusal(u"配置“%1”已经存在，覆盖请加 --force"_s.arg(name));
    return path;
}

void CheckRuleFile(const CString& path)
{
    if (!platform::Files().Exists(path)) throw Refusal(u"规则文件不存在：%1"_s.arg(platform::ToNative(path)));
    CheckRuleFileIfThere(path);
}

void CheckRuleFileIfThere(const CString& path)
{
    const shared::RuleFileState state = shared::ExamineRuleFile(path);
    if (state.kind == shared::RuleFileKind::Repeated)
        throw Refusal(
            RepeatedText(state) +
            u"；保存以后读到的会是另一段。用 ktqdde keep-first 只留第一段（先留一份历史副本），或者手工删去多余的段"_s);
    RefuseIfWrapped(state);
    if (!state.IsSafe())
        throw Refusal(u"规则文件读不了：%1：%2"_s.arg(platform::ToNative(path), state.reason.ToString()));
}

void CheckForReading(const CString& path)
{
    const shared::RuleFileState state = shared::ExamineRuleFile(path);
    if (state.kind != shared::RuleFileKind::Repeated) return CheckRuleFileIfThere(path);
    platform::WriteErr(RepeatedText(state) + u'\n');
}

void RefuseWrapped(const CString& path)
{
    RefuseIfWrapped(shared::ExamineRuleFile(path));
}

void EnsureRuleFolderOf(const CString& path)
{
    if (platform::FolderOf(path).compare(store::RuleFolder(), Qt::CaseInsensitive) == 0)
        embedded::EnsureFolder(store::RuleFolder());
}

void CheckReplaceable(const CString& path)
{
    const shared::RuleFileState state = shared::ExamineRuleFile(path);
    using enum shared::RuleFileKind;
    if (!state.IsSafe() && state.kind != Wrapped && state.kind != Repeated)
        throw Refusal(u"%1 不是规则文件，不能替换：%2"_s.arg(platform::ToNative(path), state.Describe()));
}

CString WhyNotCopied(const CString& from, const CString& to)
{
    platform::FileSystem& files = platform::Files();
    const bool stood = files.Exists(to);
    CString reason;
    const auto former = stood ? files.Read(to, &reason) : QByteArray();
    if (!former || !files.Copy(from, to, &reason)) return reason;
    stood ? files.PutBack(to, *former) : static_cast<void>(files.Remove(to));
    return {};
}

void KeepAndCheck(const CString& path, embedded::History& history)
{
    history.Keep(path);
    try {
        CheckRuleFileIfThere(path);
    } catch (const Refusal& refusal) {
        throw Refusal(CString::fromUtf8(refusal.what()) + WayBack(path, history));
    }
}

CString CurrentFile()
{
    // Read here and not asked of a presenter: making one already opens the file that is to be checked first.
    const CurrentConfiguration current(NvKtDataMng::CProj().GetPrjPath());
    current.RequirePossible();
    return InRuleFolder(current.Name());
}

embedded::RuleFileLock::GoOn TellWhoHolds()
{
    return [told = false](const CString& text, std::chrono::milliseconds waited) mutable {
        if (waited >= 1s && !std::exchange(told, true)) platform::WriteErr(text + u'\n');
        return true;
    };
}

embedded::RuleFileLock LockRuleFiles(const embedded::History& history, const CStringArray& paths)
{
    return {history.Project(), paths, TellWhoHolds()};
}

std::optional<embedded::RuleFileLock> KeepBeforeReplacing(const Arguments& arguments, const CString& path)
{
    const bool isRuleFile = path.endsWith(u".xml"_s, Qt::CaseInsensitive) ||
                            shared::ExamineRuleFile(path).kind == shared::RuleFileKind::Rules;
    if (!isRuleFile) return std::nullopt;
    auto history = HistoryOf(arguments, path);
    if (!history) return embedded::RuleFileLock({path}, TellWhoHolds());
    auto lock = LockRuleFiles(*history, {path});
    history->Keep(path);
    return lock;
}

CString NoteOnCurrent(const CString& path)
{
    const CString current = CurrentFile();
    if (current.compare(path, Qt::CaseInsensitive) == 0) return {};
    const CString wanted = platform::BeforeLastStop(platform::FileNameOf(path));
    const CString name = platform::BeforeLastStop(platform::FileNameOf(current));
    if (name.compare(wanted.isEmpty() ? store::DefaultConfigName() : wanted, Qt::CaseInsensitive) != 0)
        throw Refusal(u"工程文件 SysRegedit.ini 没有记下配置“%1”，当前配置仍然是“%2”"_s.arg(wanted, name));
    return u"注意：工程记住的当前配置是“%1”，下次打开的是 %2\n"_s.arg(name, platform::ToNative(current));
}

CString ChooseRuleFile(const QString& text)
{
    return text.isEmpty() ? CurrentFile() : ResolveRuleFile(text);
}

} // namespace cli
