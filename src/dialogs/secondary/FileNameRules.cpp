#include "dialogs/secondary/FileNameRules.h"

#include "platform/Paths.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace dialogs {

namespace {

bool HoldsControlCharacter(const CString& name)
{
    return std::any_of(name.begin(), name.end(),
                       [](QChar c) { return c.category() == QChar::Other_Control; });
}

} // namespace

CString FileNameFault(const CString& fileName)
{
    if (HoldsControlCharacter(fileName) || !fileName.isValidUtf16())
        return u"文件名不能包含控制字符或无效字符"_s;
    if (platform::IsDeviceName(fileName)) return u"文件名不能使用系统保留的设备名"_s;
    if (platform::IsTooLongFileName(fileName)) return u"文件名过长"_s;
    return {};
}

} // namespace dialogs
