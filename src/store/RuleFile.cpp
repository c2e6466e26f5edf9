#include "store/RuleFile.h"

#include "host/ConfigurationEntry.h"
#include "host/NvKtProfile.h"
#include "host/RuleFilePlaces.h"

using namespace Qt::StringLiterals;

namespace store {

CString RootName()
{
    return host::RuleFileRoot();
}
CString DefaultConfigName()
{
    return host::ConfigurationEntry::DefaultName();
}
CString TemplateFolder()
{
    return u"自动套模板"_s;
}
CString RuleFolder()
{
    return host::RuleFolder(NvKtProfile::GetAppProfile().GetAppFolder());
}
CString TemplatePath()
{
    return host::RuleTemplate(NvKtProfile::GetAppProfile().GetAppFolder());
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
