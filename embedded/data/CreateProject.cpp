#include "embedded/data/CatalogueDatabase.h"
#include "embedded/data/DataFile.h"
#include "embedded/data/EmbeddedHost.h"
#include "embedded/data/ProjectDatabase.h"
#include "embedded/data/ProjectFolder.h"
#include "platform/Files.h"
#include "platform/Paths.h"

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

[[noreturn]] void RefuseSecondProject(const ProjectFolder& folder)
{
    throw Error(platform::ToNative(folder.Path()) + u"：此文件夹中已有工程"_s);
}

/// The name of the specialty that the options ask for.
CString SpecialtyOf(const ProjectOptions& options)
{
    const CStringArray names = DataFile::Shipped(u"specialties"_s).Column(u"name"_s);
    if (options.spec.isEmpty()) return names.value(0);
    if (!names.contains(options.spec))
        throw Error(u"没有名为“%1”的专业，可用的专业有：%2"_s.arg(options.spec, names.join(u"、"_s)));
    return options.spec;
}

/// Writes the profile unless one stands there, which may hold entries of others. A piece of one would be
/// taken for such a profile the next time, so a failure leaves none.
void WriteProfile(const CString& path)
{
    platform::FileSystem& files = platform::Files();
    if (files.Exists(path)) return;
    try {
        files.WriteInPlace(path, ShippedFile(u"SysRegedit.ini"_s));
    } catch (const platform::FileError&) {
        files.Remove(path);
        throw;
    }
}

void WriteFiles(const ProjectFolder& folder)
{
    try {
        for (const CString& name : {u"QdDeConfig.def"_s, u"AttributeInformation.xml"_s})
            platform::Files().WriteInPlace(folder.AppFolder() + u'\\' + name, ShippedFile(name));
        WriteProfile(folder.ProfileFile());
    } catch (const platform::FileError& error) {
        throw Error(error.Message());
    }
}

} // namespace

void CreateProject(const QString& nativeFolder, const ProjectOptions& options)
{
    const ProjectFolder folder(nativeFolder);
    const ProjectDatabase::Settings settings{options.mode, SpecialtyOf(options)};
    if (folder.HoldsProject()) RefuseSecondProject(folder);
    EnsureFolder(folder.Path());
    EnsureFolder(folder.AppFolder());

    // The write lock on the project file keeps others out until everything stands, and the file becomes a
    // project only by the commit.
    Database database(folder.ProjectFile());
    Transaction transaction(database);
    if (!database.IsEmpty()) RefuseSecondProject(folder);
    LoadCatalogue(folder.CatalogueFile());
    WriteFiles(folder);
    ProjectDatabase::Fill(database, settings);
    transaction.Commit();
}

bool IsProject(const QString& nativeFolder)
{
    try {
        return ProjectFolder(nativeFolder).HoldsProject();
    } catch (const Error&) {
        return false; // a path that cannot hold one
    }
}

} // namespace embedded
