#include "embedded/data/RuleFileCheck.h"

#include "platform/Files.h"

namespace embedded {

using namespace Qt::StringLiterals;

std::optional<xml::LoadReason> CheckRuleFile(const CString& path, const CString& rootName)
{
    if (!platform::Files().Exists(path)) return std::nullopt;
    const xml::Document document = xml::Document::Create();
    if (!document.Load(path)) return document.Reason();
    if (document.SelectSingleNode(rootName)) return std::nullopt;
    return xml::LoadReason{0, 0, u"不是规则文件：根元素不是“%1”"_s.arg(rootName)};
}

} // namespace embedded
