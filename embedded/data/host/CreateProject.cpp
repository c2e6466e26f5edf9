#include "embedded/data/host/CreateProject.h"

#include "embedded/data/catalogue/CatalogueCopy.h"
#include "embedded/data/catalogue/CatalogueSchema.h"
#include "embedded/data/engine/DataFile.h"
#include "embedded/data/engine/Error.h"
#include "embedded/data/office/Office.h"
#include "embedded/data/office/OfficeMemory.h"
#include "embedded/data/project/ProjectChoice.h"
#include "embedded/data/project/ProjectDatabase.h"
#include "embedded/data/project/ProjectFolder.h"
#include "platform/Files.h"
#include "platform/Paths.h"

#include <QtCore/QDir>

#include <optional>

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

/// How far the work is, in percent.
constexpr int Begun = 0;
constexpr int Locked = 10;
constexpr int Catalogued = 80;
constexpr int Filled = 90;

[[noreturn]] void RefuseSecondProject(const ProjectFolder& folder)
{
    throw Error(platform::ToNative(folder.Path()) + u"：此文件夹中已有工程"_s);
}

/// What the catalogue in a folder offers, which is made first unless it stands there.
ProjectChoice EnsuredChoice(const ProjectFolder& folder, const Progress& progress)
{
    Database catalogue(folder.CatalogueFile());
    EnsureCatalogue(catalogue, progress);
    return ReadChoice(catalogue);
}

/// The state of an office's catalogue from which a project begins.
struct OfficeStart
{
    CopiedState state;
    CatalogueRows rows;
    ProjectChoice choice;
};

OfficeStart ReadOffice(const CString& name)
{
    Office office(name);
    Database& connection = office.Connection();
    const Snapshot snapshot(connection);
    OfficeStart start;
    start.state = {name, office.CatalogueRevision()};
    start.rows = ReadCatalogueRows(connection);
    start.choice = ReadChoice(connection);
    return start;
}

/// The name of the specialty that the options ask for.
CString SpecialtyOf(const ProjectOptions& options, const CStringArray& names)
{
    if (options.spec.isEmpty()) return names.value(0);
    if (!names.contains(options.spec))
        throw Error(u"没有名为“%1”的专业，可用的专业有：%2"_s.arg(options.spec, names.join(u"、"_s)));
    return options.spec;
}

/// What the project is to be set to. Which library is the first of a role may change with the catalogue, so
/// every role gets its code.
ProjectDatabase::Settings SettingsOf(const ProjectOptions& options, const ProjectChoice& choice)
{
    ProjectDatabase::Settings settings{options.mode, SpecialtyOf(options, choice.specs)};
    settings.office = options.office;
    const CString bill = RequireLibrary(choice.libraries, LibraryRole::Bill, options.billLibrary).name.code;
    settings.libraries.emplace(LibraryRole::Bill, bill);
    for (const LibraryRole role : {LibraryRole::QuotaOfBills, LibraryRole::Quota}) {
        CString code;
        if (role == QuotaRole(options.mode)) code = options.quotaLibrary;
        if (code.isEmpty()) code = QuotaLibraryBeside(NamesOf(choice.libraries, role), bill);
        settings.libraries.emplace(role, RequireLibrary(choice.libraries, role, code).name.code);
    }
    return settings;
}

/// Whether a catalogue was left in the folder; an empty file is what an interrupted creation leaves.
bool HoldsCatalogue(const ProjectFolder& folder)
{
    const auto head = platform::Files().ReadHead(folder.CatalogueFile(), 1);
    return head.has_value() && !head->isEmpty();
}

/// Raises `Error` when the options name what the new project will not have. A catalogue that was left in the
/// folder stays the catalogue.
void CheckOptions(const ProjectFolder& folder, const ProjectOptions& options)
{
    SettingsOf(options, HoldsCatalogue(folder) ? EnsuredChoice(folder, {}) : ShippedChoice());
}

/// The same for a project on an office. Somebody's own data are not replaced by the office's.
void CheckOptions(const ProjectFolder& folder, const ProjectOptions& options, const OfficeStart& start)
{
    SettingsOf(options, start.choice);
    if (!HoldsCatalogue(folder)) return;
    Database left(folder.CatalogueFile());
    if (!left.IsEmpty() && !StateOfCopy(left))
        left.Fail(u"文件夹中已有自己的数据，不会用办公室的数据代替它；请移走它，或另选文件夹"_s);
}

/// Writes the profile unless one stands there, which may hold entries of others. A piece of one would be
/// taken for such a profile the next time, so a failure leaves none.
void WriteProfile(const CString& path)
{
    platform::FileSystem& files = platform::Files();
    if (files.Exists(path)) return;
    try {
        files.WriteInPlace(path, ShippedFile(platform::FileNameOf(path)));
    } catch (const platform::FileError&) {
        files.Remove(path);
        throw;
    }
}

/// What a creation makes and nobody had made before.
class NewPlaces
{
public:
    /// `paths` come in the order in which they are made.
    explicit NewPlaces(const CStringArray& paths)
    {
        for (const CString& path : paths)
            if (!platform::Files().Exists(path)) m_paths.prepend(path);
    }

    /// Removes it. A folder in which others have put something stays.
    void Remove()
    {
        m_paths.removeIf([](const CString& path) {
            return platform::Files().Remove(path) || QDir().rmdir(platform::ToNative(path));
        });
    }

private:
    CStringArray m_paths; ///< what is still to be removed, the last made first
};

void WriteFiles(const ProjectFolder& folder)
{
    try {
        for (const CString& file :
             {folder.TemplateFile(), folder.AppFolder() + u"\\AttributeInformation.xml"_s})
            platform::Files().WriteInPlace(file, ShippedFile(platform::FileNameOf(file)));
        WriteProfile(folder.ProfileFile());
    } catch (const platform::FileError& error) {
        throw Error(error.Message());
    }
}

/// Makes the folder's catalogue a copy of the office's.
void FillCopy(const ProjectFolder& folder, const OfficeStart& start)
{
    Database copy(folder.CatalogueFile());
    Transaction transaction(copy);
    WriteCatalogueCopy(copy, start.rows, start.state);
    transaction.Commit();
    OfficeMemory(folder.OfficeFile()).RememberSeen(start.state.revision, QDateTime::currentDateTimeUtc());
}

/// What a new project is made from.
struct Creation
{
    const ProjectFolder& folder;
    const ProjectOptions& options;
    const std::optional<OfficeStart>& office;
    const Progress& progress;
};

/// Fills the catalogue; gives what it offers.
ProjectChoice FillCatalogueOf(const Creation& creation)
{
    if (creation.office) {
        FillCopy(creation.folder, *creation.office);
        return creation.office->choice;
    }
    return EnsuredChoice(creation.folder, [&](int percent) {
        return !creation.progress || creation.progress(Locked + (Catalogued - Locked) * percent / 100);
    });
}

/// Fills the catalogue and then the project's database.
void FillDatabases(const Creation& creation, Database& database)
{
    Tell(creation.progress, Locked);
    const ProjectChoice choice = FillCatalogueOf(creation);
    Tell(creation.progress, Catalogued);
    ProjectDatabase::Fill(database, SettingsOf(creation.options, choice));
    Tell(creation.progress, Filled);
}

/// The write lock on the project file keeps others out until everything stands, and the file becomes a
/// project only by the commit. Whoever cancels removes it under the lock: nobody else can have begun then.
/// The files come last, for they take the place of what stood there; after that nobody can cancel.
void FillFolder(const Creation& creation, NewPlaces& places)
{
    const ProjectFolder& folder = creation.folder;
    Database database(folder.ProjectFile());
    Transaction transaction(database);
    if (!database.IsEmpty()) RefuseSecondProject(folder);
    if (!platform::Files().Exists(folder.ProjectFile()))
        database.Fail(u"另一个程序刚刚取消了在此新建，请再试一次"_s);
    try {
        FillDatabases(creation, database);
    } catch (const Cancelled&) {
        places.Remove();
        throw;
    }
    WriteFiles(folder);
    transaction.Commit();
}

} // namespace

void CreateProject(const QString& nativeFolder, const ProjectOptions& options, const Progress& progress)
{
    const ProjectFolder folder(nativeFolder);
    if (folder.HoldsProject()) RefuseSecondProject(folder);
    std::optional<OfficeStart> office;
    if (!options.office.isEmpty()) office = ReadOffice(options.office);
    office ? CheckOptions(folder, options, *office) : CheckOptions(folder, options);
    Tell(progress, Begun);
    NewPlaces places({folder.Path(), folder.AppFolder(), folder.ProjectFile(), folder.CatalogueFile(),
                      folder.OfficeFile()});
    try {
        EnsureFolder(folder.Path());
        EnsureFolder(folder.AppFolder());
        FillFolder({folder, options, office, progress}, places);
    } catch (const Cancelled&) {
        // Where the platform removes no file that is open; without the lock another program may have begun.
        if (!folder.HoldsProject()) places.Remove();
        throw;
    }
}

} // namespace embedded
