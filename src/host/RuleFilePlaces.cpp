#include "host/RuleFilePlaces.h"

using namespace Qt::StringLiterals;

namespace host {

CString RuleFolder(const CString& appFolder)
{
    return appFolder + u"\\自动套配置"_s;
}

CString RuleTemplate(const CString& appFolder)
{
    return appFolder + u"\\QdDeConfig.def"_s;
}

CString RuleFileIn(const CString& folder, const CString& configuration)
{
    return folder + u'\\' + configuration + u".xml"_s;
}

CString RuleFileRoot()
{
    return u"自动套清单定额配置信息"_s;
}

} // namespace host
