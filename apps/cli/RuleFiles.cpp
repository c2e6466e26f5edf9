#include "cli/RuleFiles.h"

#include "cli/Failure.h"
#include "host/NvKtDataMng.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "platform/ProfileFile.h"
#include "store/RuleFile.h"
#include "xml/Dom.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace cli {

namespace {

/// The project's ini gives back no more than this.
constexpr qsizetype LongestName = 99;

bool IsPossibleName(const CString& name)
{
    static const CString Forbidden = u"/\\:*?\"<>|"_s;
    return !name.isEmpty() && name.size() <= LongestName && name == name.trimmed() && xml::IsText(name) &&
           std::none_of(name.begin(), name.end(), [](QChar character) {
               return Forbidden.contains(character) || character.category() == QChar::Other_Control;
           });
}

CString InRuleFolder(const CString& name)
{
    return store::RuleFolder() + u'\\' + name + u".xml"_s;
}

CString Place(const xml::LoadReason& reason)
{
    return reason.line > 0 ? u"第 %1 行第 %2 列："_s.arg(reason.line).arg(reason.column) : CString();
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
    if (text.contains(u'/') || text.contains(u'\\') || text.endsWith(u".xml"_s, Qt::CaseInsensitive))
        return ResolvePath(text);
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

void CheckRuleFile(const CString& path)
{
    const QString native = platform::ToNative(path);
    if (!platform::Files().Exists(path)) throw Refusal(u"规则文件不存在：%1"_s.arg(native));
    const xml::Document document = xml::Document::Create();
    if (!document.Load(path)) {
        const xml::LoadReason reason = document.Reason();
        throw Refusal(u"规则文件读不了：%1：%2%3"_s.arg(native, Place(reason), reason.text));
    }
    if (document.SelectSingleNode(store::RootName()).IsNull())
        throw Refusal(u"不是规则文件：%1：根元素不是“%2”"_s.arg(native, store::RootName()));
}

void CheckRuleFileIfThere(const CString& path)
{
    if (platform::Files().Exists(path)) CheckRuleFile(path);
}

CString CheckedCurrentFile()
{
    // Read here and not asked of a presenter: making one already opens the file that is to be checked first.
    const CString ini = platform::FolderOf(NvKtDataMng::CProj().GetPrjPath()) + u"\\SysRegedit.ini"_s;
    CString name =
        platform::ProfileFile(ini).Read(u"QdDeConfigInfo"_s, u"ConfigName"_s, CString(), LongestName + 1);
    if (name.isEmpty()) name = store::DefaultConfigName();
    const CString path = InRuleFolder(name);
    CheckRuleFileIfThere(path);
    return path;
}

CString ChooseRuleFile(const QString& text, bool mustExist)
{
    if (text.isEmpty()) return CheckedCurrentFile();
    const CString path = ResolveRuleFile(text);
    mustExist ? CheckRuleFile(path) : CheckRuleFileIfThere(path);
    return path;
}

} // namespace cli
