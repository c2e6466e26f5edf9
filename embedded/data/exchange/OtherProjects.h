#pragma once

#include "embedded/data/catalogue/Library.h"
#include "embedded/data/exchange/ImportReport.h"
#include "embedded/data/office/ProjectUses.h"

namespace embedded {

struct CatalogueData;
class Database;

/// What an import into the catalogue of an office must not take away from under its other projects, as far as
/// they had it before: the specialties that they are on, and the libraries that they use. Made in the
/// transaction of the import before anything is stored, asked when all is stored.
class OtherProjects
{
public:
    /// `uses` are theirs, none for a catalogue that belongs to one project alone. `before` are the libraries
    /// of the catalogue in `database`, of which a project may lack by now what it once used. Raises `Error`.
    OtherProjects(CArray<ProjectUse> uses, CArray<Library> before, Database& database);

    /// Adds a refusal to the report for each specialty and library of theirs that the catalogue no longer has
    /// once it holds `data` and the libraries `after`.
    void Check(const CatalogueData& data, const CArray<Library>& after, ImportReport& report) const;

private:
    void CheckLibrary(const ProjectUse& use, const CString& word, const CString& code,
                      const CArray<Library>& after, ImportReport& report) const;

    CArray<ProjectUse> m_uses;
    CArray<Library> m_before;
    CArray<bool> m_hadSpecialty; ///< one for each of `m_uses`
};

} // namespace embedded
