#include "store/RuleFile.h"

#include "host/NvKtProfile.h"

using namespace Qt::StringLiterals;

namespace store {

CString RootName()
{
    return u"自动套清单定额配置信息"_s;
}
CString DefaultConfigName()
{
    return u"DefaultConfig"_s;
}
CString TemplateFolder()
{
    return u"自动套模板"_s;
}
CString RuleFolder()
{
    return NvKtProfile::GetAppProfile().GetAppFolder() + u"\\自动套配置"_s;
}
CString TemplatePath()
{
    return NvKtProfile::GetAppProfile().GetAppFolder() + u"\\QdDeConfig.def"_s;
}
CString VersionText()
{
    return NvKtProfile::GetAppProfile().GetVersion().ToString();
}

CString VersionTextOrDefault()
{
    const CString version = VersionText();
    return version.isEmpty() ? u"1.0.0"_s : version;
}

} // namespace store
