#include "embedded/data/host/LibraryChoice.h"

#include "embedded/data/catalogue/LibraryDatabase.h"
#include "embedded/data/engine/Error.h"
#include "embedded/data/office/ProjectCatalogue.h"
#include "embedded/data/project/ProjectDatabase.h"
#include "embedded/data/project/ProjectFolder.h"

#include <QtCore/QHash>

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

CArray<LibraryEntry> Entries(Database& catalogue, const ProjectDatabase::Settings& settings)
{
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

/// The entry of a code. Raises `Error` when there is none.
const LibraryEntry& Find(const CArray<LibraryEntry>& entries, const CString& code)
{
    CArray<LibraryName> known;
    for (const LibraryEntry& entry : entries) {
        if (entry.name.code == code) return entry;
        known.append(entry.name);
    }
    RefuseLibrary(code, u"库"_s, known);
}

} // namespace

CArray<LibraryEntry> ListLibraries(const QString& nativeProject)
{
    const ProjectFolder folder = ExistingProject(nativeProject);
    const ProjectDatabase::Settings settings = ProjectDatabase(folder.ProjectFile()).ReadSettings();
    ProjectCatalogue catalogue(folder, settings);
    catalogue.BringUpToDate();
    return Entries(catalogue.Local(), settings);
}

LibraryEntry UseLibrary(const QString& nativeProject, const CString& code)
{
    const ProjectFolder folder = ExistingProject(nativeProject);
    ProjectDatabase project(folder.ProjectFile());
    ProjectDatabase::Settings settings = project.ReadSettings();
    ProjectCatalogue catalogue(folder, settings);
    catalogue.BringUpToDate();
    const Transaction catalogueStays(catalogue.Local());
    LibraryEntry used = Find(Entries(catalogue.Local(), {}), code);
    project.WriteLibrary(used.role, code);
    used.isInUse = true;
    settings.libraries[used.role] = code;
    if (catalogue.Office() != nullptr) catalogue.Office()->TellUse(settings.spec, settings.libraries);
    return used;
}

CString GuideHint(LibraryRole role, const LibraryName& quota, const CString& bill)
{
    if (bill.isEmpty() || quota.billLibrary.isEmpty() || quota.billLibrary == bill) return {};
    return u"%1 %2 的指引是清单库 %3 的，使用清单库 %4 时不列出常用定额"_s.arg(RoleLabel(role), quota.code,
                                                                               quota.billLibrary, bill);
}

} // namespace embedded
