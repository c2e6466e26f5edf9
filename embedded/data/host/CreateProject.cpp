#include "embedded/data/host/CreateProject.h"

#include "embedded/data/catalogue/CatalogueDatabase.h"
#include "embedded/data/catalogue/CatalogueSchema.h"
#include "embedded/data/catalogue/LibraryDatabase.h"
#include "embedded/data/catalogue/ShippedLibraries.h"
#include "embedded/data/engine/DataFile.h"
#include "embedded/data/engine/Error.h"
#include "embedded/data/project/ProjectDatabase.h"
#include "embedded/data/project/ProjectFolder.h"
#include "platform/Files.h"
#include "platform/Paths.h"

#include <QtCore/QDir>

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

/// What a new project can choose from.
struct Choice
{
    CArray<Library> libraries;
    CStringArray specs;
};

Choice ShippedChoice()
{
    return {AllShippedLibraries(), DataFile::Shipped(u"specialties"_s).Column(u"name"_s)};
}

/// What a catalogue offers, which is made first unless it stands there.
Choice ChoiceOf(const ProjectFolder& folder, const Progress& progress)
{
    Database catalogue(folder.CatalogueFile());
    EnsureCatalogue(catalogue, progress);
    Choice choice{ReadLibraries(catalogue), {}};
    for (const Specialty& specialty : ReadCatalogue(catalogue).specialties)
        choice.specs.append(specialty.name);
    return choice;
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
ProjectDatabase::Settings SettingsOf(const ProjectOptions& options, const Choice& choice)
{
    ProjectDatabase::Settings settings{options.mode, SpecialtyOf(options, choice.specs)};
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

/// Raises `Error` when the options name what the new project will not have. A catalogue that was left in the
/// folder stays the catalogue; an empty file is what an interrupted creation leaves.
void CheckOptions(const ProjectFolder& folder, const ProjectOptions& options)
{
    const auto head = platform::Files().ReadHead(folder.CatalogueFile(), 1);
    const bool stands = head.has_value() && !head->isEmpty();
    SettingsOf(options, stands ? ChoiceOf(folder, {}) : ShippedChoice());
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
        for (const CString& name : {u"QdDeConfig.def"_s, u"AttributeInformation.xml"_s})
            platform::Files().WriteInPlace(folder.AppFolder() + u'\\' + name, ShippedFile(name));
        WriteProfile(folder.ProfileFile());
    } catch (const platform::FileError& error) {
        throw Error(error.Message());
    }
}

/// Fills the catalogue and then the project's database.
void FillDatabases(const ProjectFolder& folder, Database& database, const ProjectOptions& options,
                   const Progress& progress)
{
    Tell(progress, Locked);
    const Choice choice = ChoiceOf(folder, [&](int percent) {
        return !progress || progress(Locked + (Catalogued - Locked) * percent / 100);
    });
    Tell(progress, Catalogued);
    ProjectDatabase::Fill(database, SettingsOf(options, choice));
    Tell(progress, Filled);
}

/// The write lock on the project file keeps others out until everything stands, and the file becomes a
/// project only by the commit. Whoever cancels removes it under the lock: nobody else can have begun then.
/// The files come last, for they take the place of what stood there; after that nobody can cancel.
void FillFolder(const ProjectFolder& folder, const ProjectOptions& options, const Progress& progress,
                NewPlaces& places)
{
    Database database(folder.ProjectFile());
    Transaction transaction(database);
    if (!database.IsEmpty()) RefuseSecondProject(folder);
    if (!platform::Files().Exists(folder.ProjectFile()))
        database.Fail(u"另一个程序刚刚取消了在此新建，请再试一次"_s);
    try {
        FillDatabases(folder, database, options, progress);
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
    CheckOptions(folder, options);
    Tell(progress, Begun);
    NewPlaces places({folder.Path(), folder.AppFolder(), folder.ProjectFile(), folder.CatalogueFile()});
    try {
        EnsureFolder(folder.Path());
        EnsureFolder(folder.AppFolder());
        FillFolder(folder, options, progress, places);
    } catch (const Cancelled&) {
        // Where the platform removes no file that is open; without the lock another program may have begun.
        if (!folder.HoldsProject()) places.Remove();
        throw;
    }
}

} // namespace embedded
