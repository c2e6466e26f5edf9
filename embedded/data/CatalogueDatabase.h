#pragma once

#include "embedded/data/CatalogueData.h"
#include "embedded/data/Database.h"

namespace embedded {

/// Reads the catalogue from the database at a path text. A missing or empty database is first filled with the
/// shipped tables. Raises `Error` when the database is damaged, locked, newer or not writable while it has to
/// be filled.
CatalogueData LoadCatalogue(const CString& path);

/// The two steps of that on an open database.
void EnsureCatalogue(Database& database);
CatalogueData ReadCatalogue(Database& database);

} // namespace embedded
