#include "cli/reading/Overwriting.h"

#include "cli/reading/Arguments.h"
#include "cli/reading/Failure.h"
#include "embedded/data/project/ProjectFolder.h"
#include "platform/Files.h"
#include "platform/Paths.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

using namespace Qt::StringLiterals;

namespace cli {

namespace {

bool IsOneOf(const CStringArray& paths, const CString& path)
{
    return paths.contains(path, Qt::CaseInsensitive); // as the file systems of most users compare
}

/// Whether a project would be damaged, or lose copies, if the file were another one.
bool BelongsTo(const embedded::ProjectFolder& project, const CString& path)
{
    return IsOneOf(
               {project.ProjectFile(), project.ProfileFile(), project.CatalogueFile(), project.OfficeFile()},
               path) ||
           path.startsWith(project.HistoryFolder() + u'\\', Qt::CaseInsensitive);
}

/// Whether a file that stands there is such a one of any project, whatever way leads to it.
bool BelongsToAProject(const CString& path)
{
    const QString file = QFileInfo(platform::ToNative(path)).canonicalFilePath();
    QDir folder = QFileInfo(file).dir();
    do {
        const QString place = folder.path();
        if (platform::HasPathText(place) &&
            BelongsTo(embedded::ProjectFolder(place), platform::FromNative(file)) &&
            embedded::IsProject(place))
            return true;
    } while (folder.cdUp());
    return false;
}

} // namespace

void RefuseToOverwrite(const Arguments& arguments, const CString& path)
{
    if (!platform::Files().Exists(path)) return;
    if (BelongsToAProject(path))
        throw Refusal(u"%1 是工程自己的文件，不能覆盖，请换一个文件名"_s.arg(platform::ToNative(path)));
    if (!arguments.Has(u"force"_s))
        throw Refusal(u"%1 已经存在，覆盖请加 --force"_s.arg(platform::ToNative(path)));
}

} // namespace cli
