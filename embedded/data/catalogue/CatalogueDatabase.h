#pragma once

#include "embedded/data/catalogue/CatalogueData.h"
#include "embedded/data/engine/Database.h"

namespace embedded {

/// Reads a catalogue, without its libraries. Raises `Error`.
CatalogueData ReadCatalogue(Database& database);

} // namespace embedded
