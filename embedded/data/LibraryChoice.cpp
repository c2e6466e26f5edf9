#include "embedded/data/LibraryChoice.h"

#include "embedded/data/CatalogueDatabase.h"
#include "embedded/data/Error.h"
#include "embedded/data/LibraryDatabase.h"
#include "embedded/data/ProjectDatabase.h"
#include "embedded/data/ProjectFolder.h"

#include <QtCore/QHash>

#include <algorithm>
#include <utility>

namespace embedded {

using namespace Qt::StringLiterals;

namespace {

/// The numbers of items by item set.
QHash<CString, int> CountItems(Database& catalogue, const CString& table)
{
    QHash<CString, int> counts;
    catalogue.ForEach(
        u"SELECT items, count(*) FROM %1 GROUP BY items"_s.arg(table), {},
        [&](const QSqlQuery& row) { counts.insert(row.value(0).toString(), row.value(1).toInt()); });
    return counts;
}

ProjectFolder ExistingProject(const QString& nativeProject)
{
    ProjectFolder folder(nativeProject);
    folder.RequireProject();
    return folder;
}

} // namespace

CArray<LibraryEntry> ListLibraries(const QString& nativeProject)
{
    const ProjectFolder folder = ExistingProject(nativeProject);
    const ProjectDatabase::Settings settings = ProjectDatabase(folder.ProjectFile()).ReadSettings();
    Database catalogue(folder.CatalogueFile());
    EnsureCatalogue(catalogue);
    const QHash<CString, int> bills = CountItems(catalogue, u"bill_items"_s);
    const QHash<CString, int> quotas = CountItems(catalogue, u"quota_items"_s);
    const CArray<Library> libraries = ReadLibraries(catalogue);
    CArray<LibraryEntry> entries;
    for (const Library& library : libraries) {
        const Library* const inUse = FindLibrary(libraries, library.role, settings.Library(library.role));
        const QHash<CString, int>& counts = library.role == LibraryRole::Bill ? bills : quotas;
        entries.append({library.role, library.name, counts.value(library.items), inUse == &library});
    }
    return entries;
}

LibraryEntry UseLibrary(const QString& nativeProject, const CString& code)
{
    CArray<LibraryEntry> entries = ListLibraries(nativeProject);
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [&](const LibraryEntry& entry) { return entry.name.code == code; });
    if (found == entries.end()) {
        CArray<LibraryName> known;
        for (const LibraryEntry& entry : std::as_const(entries))
            known.append(entry.name);
        RefuseLibrary(code, u"库"_s, known);
    }
    ProjectDatabase(ProjectFolder(nativeProject).ProjectFile()).WriteLibrary(found->role, code);
    found->isInUse = true;
    return *found;
}

} // namespace embedded
