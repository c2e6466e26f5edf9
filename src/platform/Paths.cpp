#include "platform/Paths.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

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

} // namespace platform
