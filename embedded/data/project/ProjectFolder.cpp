#include "embedded/data/project/ProjectFolder.h"

#include "embedded/data/engine/Error.h"
#include "host/ProjectIni.h"
#include "host/RuleFilePlaces.h"
#include "platform/Files.h"
#include "platform/Paths.h"

#include <QtCore/QFileInfo>

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

CString HistoryBelow()
{
    return u"history"_s;
}

} // namespace

ProjectFolder::ProjectFolder(const QString& nativeFolder) : m_path(platform::FromNative(nativeFolder))
{
    if (m_path.isEmpty()) throw Error(u"工程文件夹的路径不能为空"_s);
    if (!platform::HasPathText(nativeFolder))
        throw Error(nativeFolder + u"：路径中含有反斜杠，不能作为工程文件夹"_s);
}

CString ProjectFolder::AppFolder() const
{
    return m_path + u"\\app"_s;
}

CString ProjectFolder::RuleFolder() const
{
    return host::RuleFolder(AppFolder());
}

CString ProjectFolder::TemplateFile() const
{
    return host::RuleTemplate(AppFolder());
}

CString ProjectFolder::CatalogueFile() const
{
    return AppFolder() + u"\\catalogue.db"_s;
}

CString ProjectFolder::OfficeFile() const
{
    return AppFolder() + u"\\office.db"_s;
}

CString ProjectFolder::ProjectFile() const
{
    return m_path + u"\\project.ktqd"_s;
}

CString ProjectFolder::ProfileFile() const
{
    return host::ProjectIni(ProjectFile());
}

CString ProjectFolder::HistoryFolder() const
{
    return m_path + u'\\' + HistoryBelow();
}

CString ProjectFolder::LocksBelow()
{
    return HistoryBelow() + u"\\locks"_s;
}

CString ProjectFolder::DraftsBelow()
{
    return HistoryBelow() + u"\\drafts"_s;
}

bool ProjectFolder::IsRuleFile(const CString& path) const
{
    const auto isBelow = [&path](const CString& folder) {
        return path.startsWith(folder + u'\\', Qt::CaseInsensitive);
    };
    if (!path.endsWith(u".xml"_s, Qt::CaseInsensitive) || isBelow(m_path + u'\\' + DraftsBelow()))
        return false;
    return isBelow(RuleFolder()) || !isBelow(AppFolder());
}

bool ProjectFolder::HoldsProject() const
{
    const auto head = platform::Files().ReadHead(ProjectFile(), 1);
    return head ? !head->isEmpty() : platform::Files().Exists(ProjectFile());
}

void ProjectFolder::RequireProject() const
{
    const QFileInfo folder(platform::ToNative(m_path));
    if (folder.isDir() && !(folder.isReadable() && folder.isExecutable()))
        throw Error(folder.filePath() + u"：没有读取此文件夹的权限"_s);
    if (!HoldsProject()) throw Error(folder.filePath() + u"：此文件夹中没有工程"_s);
    try {
        platform::Files().OpenForReading(ProjectFile());
    } catch (const platform::FileError& error) {
        throw Error(u"工程文件读不了："_s + error.Message());
    }
}

bool IsProject(const QString& nativeFolder)
{
    try {
        return ProjectFolder(nativeFolder).HoldsProject();
    } catch (const Error&) {
        return false; // a path that cannot hold one
    }
}

void EnsureFolder(const CString& path)
{
    platform::FileSystem& files = platform::Files();
    // Another program may create the folder between the two questions, so the second one decides.
    if (files.CreateFolder(path) || files.Exists(path)) return;
    throw Error(platform::ToNative(path) + u"：无法建立文件夹"_s);
}

} // namespace embedded
