#include "platform/Paths.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QStringView>

#include <algorithm>
#include <array>

namespace platform {

namespace {

QString AbsoluteNative(const QString& nativePath)
{
    return QDir::cleanPath(QFileInfo(nativePath).absoluteFilePath());
}

} // namespace

QString ToNative(const CString& pathText)
{
    QString native = pathText;
    return native.replace(u'\\', QDir::separator());
}

CString FromNative(const QString& nativePath)
{
    return nativePath.isEmpty() ? CString() : AbsoluteNative(nativePath).replace(u'/', u'\\');
}

bool HasPathText(const QString& nativePath)
{
    return nativePath.isEmpty() || QDir::separator() == u'\\' || !AbsoluteNative(nativePath).contains(u'\\');
}

CString FolderOf(const CString& pathText)
{
    return pathText.left(qMax(qsizetype{0}, pathText.lastIndexOf(u'\\')));
}

CString FileNameOf(const CString& pathText)
{
    return pathText.mid(pathText.lastIndexOf(u'\\') + 1);
}

CString BeforeLastStop(const CString& fileName)
{
    return fileName.left(qMax(qsizetype{0}, fileName.lastIndexOf(u'.')));
}

bool IsDeviceName(const CString& fileName)
{
    const CString device = fileName.section(u'.', 0, 0).trimmed().toUpper();
    const std::array<QStringView, 6> devices{u"CON", u"PRN", u"AUX", u"NUL", u"CONIN$", u"CONOUT$"};
    if (std::find(devices.begin(), devices.end(), device) != devices.end()) return true;
    const bool isPort = device.startsWith(u"COM") || device.startsWith(u"LPT");
    return isPort && device.size() == 4 && device.at(3) >= u'1' && device.at(3) <= u'9';
}

bool IsForbiddenInFileNames(QChar character)
{
    return QStringView(u"\\/:*?\"<>|").contains(character);
}

bool IsTooLongFileName(const CString& fileName)
{
    constexpr qsizetype most = 255;
    return fileName.toUtf8().size() > most;
}

} // namespace platform
