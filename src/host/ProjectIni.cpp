#include "host/ProjectIni.h"

#include "platform/Paths.h"

namespace host {

CString ProjectIni(const CString& projectFile)
{
    return platform::FolderOf(projectFile) + QStringLiteral("\\SysRegedit.ini");
}

} // namespace host
