#include "embedded/windows/CloudFolder.h"

#include "host/ProjectIni.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "platform/ProfileFile.h"

#include <QtCore/QFileInfo>

using namespace Qt::StringLiterals;

namespace embedded {

namespace {

/// Longer than any path of the supported systems.
constexpr int PathBuffer = 32768;

platform::ProfileFile Profile(const CString& projectFile)
{
    return platform::ProfileFile(host::ProjectIni(projectFile));
}

CString Section()
{
    return u"CloudDisk"_s;
}
CString Key()
{
    return u"Folder"_s;
}

/// The project's own folder. One that cannot be made is told by `Fault`.
CString MakeDefaultFolder(const CString& projectFolder, const CString& name)
{
    const CString disk = projectFolder + u"\\云盘"_s;
    CString folder = disk + u'\\' + name;
    if (!platform::Files().Exists(folder)) {
        platform::Files().CreateFolder(disk);
        platform::Files().CreateFolder(folder);
    }
    return folder;
}

} // namespace

CloudFolder::CloudFolder(const CString& projectFile, const CString& name, const QString& preset)
    : m_projectFile(projectFile), m_path(platform::FromNative(preset))
{
    if (m_path.isEmpty()) m_path = Profile(m_projectFile).Read(Section(), Key(), {}, PathBuffer);
    if (m_path.isEmpty()) m_path = MakeDefaultFolder(platform::FolderOf(m_projectFile), name);
}

CString CloudFolder::Fault() const
{
    const QFileInfo folder(platform::ToNative(m_path));
    if (!folder.exists()) return u"云盘文件夹不存在，请选择文件夹。"_s;
    if (!folder.isDir()) return u"云盘的位置不是文件夹，请选择文件夹。"_s;
    if (!folder.isReadable() || !folder.isExecutable())
        return u"没有读取云盘文件夹的权限，请选择其他文件夹。"_s;
    return {};
}

CString CloudFolder::Choose(const QString& nativeFolder)
{
    if (!platform::HasPathText(nativeFolder)) return u"不能使用此文件夹，它的路径中有反斜杠"_s;
    m_path = platform::FromNative(nativeFolder);
    m_chosen = true;
    if (Profile(m_projectFile).Write(Section(), Key(), m_path)) return {};
    return u"工程文件 SysRegedit.ini 不能写入，下次打开工程时需要重新选择文件夹"_s;
}

} // namespace embedded
