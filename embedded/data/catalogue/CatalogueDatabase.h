#pragma once

#include "embedded/data/catalogue/CatalogueData.h"
#include "embedded/data/engine/Database.h"

namespace embedded {

/// Reads a catalogue, without its libraries. Raises `Error`.
CatalogueData ReadCatalogue(Database& database);

/// Whether a catalogue has a specialty of that name.
bool HasSpecialty(const CatalogueData& data, const CString& name);

} // namespace embedded
