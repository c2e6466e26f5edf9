#include "dialogs/secondary/FileNameRules.h"

#include <QtCore/QStringView>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace dialogs {

namespace {

constexpr qsizetype MaxBytes = 255;

bool HoldsControlCharacter(const CString& name)
{
    return std::any_of(name.begin(), name.end(),
                       [](QChar c) { return c.category() == QChar::Other_Control; });
}

bool IsDeviceName(const CString& name)
{
    const CString device = name.section(u'.', 0, 0).trimmed().toUpper();
    const std::array<QStringView, 6> devices{u"CON", u"PRN", u"AUX", u"NUL", u"CONIN$", u"CONOUT$"};
    if (std::find(devices.begin(), devices.end(), device) != devices.end()) return true;
    const bool isPort = device.startsWith(u"COM") || device.startsWith(u"LPT");
    return isPort && device.size() == 4 && device.at(3) >= u'1' && device.at(3) <= u'9';
}

} // namespace

CString FileNameFault(const CString& fileName)
{
    if (HoldsControlCharacter(fileName) || !fileName.isValidUtf16())
        return u"文件名不能包含控制字符或无效字符"_s;
    if (IsDeviceName(fileName)) return u"文件名不能使用系统保留的设备名"_s;
    if (fileName.toUtf8().size() > MaxBytes) return u"文件名过长"_s;
    return {};
}

} // namespace dialogs
