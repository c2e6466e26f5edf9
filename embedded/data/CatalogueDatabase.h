#pragma once

#include "embedded/data/CatalogueData.h"

namespace embedded {

/// Reads the catalogue from the database at a path text. A missing or empty database is first filled with the
/// shipped tables. Raises `Error` when the database is damaged, locked, newer or not writable while it has to
/// be filled.
CatalogueData LoadCatalogue(const CString& path);

} // namespace embedded
