#include "cli/reading/RuleFiles.h"

#include "cli/reading/Failure.h"
#include "embedded/data/project/CurrentConfiguration.h"
#include "host/NvKtDataMng.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "shared/RuleFileNames.h"
#include "shared/RuleFileState.h"
#include "store/RuleFile.h"
#include "xml/Dom.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace cli {

namespace {

using embedded::CurrentConfiguration;

bool IsPossibleName(const CString& name)
{
    static const CString Forbidden = u"/\\:*?\"<>|"_s;
    return !name.isEmpty() && name.size() <= CurrentConfiguration::LongestName && name == name.trimmed() &&
           xml::IsText(name) && std::none_of(name.begin(), name.end(), [](QChar character) {
               return Forbidden.contains(character) || character.category() == QChar::Other_Control;
           });
}

/// How to get the newest copy of a rule file back that can be read; empty when there is none.
CString WayBack(const CString& path, const embedded::History& history)
{
    const auto entries = history.List(path);
    const auto readable = std::find_if(entries.begin(), entries.end(), [](const auto& entry) {
        return shared::ExamineRuleFile(entry.copy).IsSafe();
    });
    if (readable == entries.end()) return {};
    return u"\n最近一份读得了的历史副本可以这样恢复：ktqdde history restore %1"_s.arg(readable->id);
}

CString InRuleFolder(const CString& name)
{
    return shared::RuleFileIn(store::RuleFolder(), name);
}

} // namespace

CString ResolvePath(const QString& nativePath)
{
    if (nativePath.isEmpty() || nativePath.contains(QChar::Null) || !platform::HasPathText(nativePath))
        throw Refusal(u"“%1”不能用作文件路径"_s.arg(nativePath));
    return platform::FromNative(nativePath);
}

CString ResolveRuleFile(const QString& text)
{
    if (shared::NamesPath(text)) return ResolvePath(text);
    const CString native = ResolvePath(text);
    if (!platform::Files().Exists(InRuleFolder(text)) && platform::Files().Exists(native)) return native;
    return ConfigurationPath(text);
}

CString ConfigurationPath(const CString& name)
{
    if (!IsPossibleName(name))
        throw Refusal(
            u"“%1”不能用作配置名：1 到 99 个字符，首尾没有空格，不含 / \\ : * ? \" < > | 和控制字符"_s.arg(
                name));
    return InRuleFolder(name);
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
    if (!state.IsSafe())
        throw Refusal(u"规则文件读不了：%1：%2"_s.arg(platform::ToNative(path), state.reason.ToString()));
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
    return InRuleFolder(CurrentConfiguration(NvKtDataMng::CProj().GetPrjPath()).Name());
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
