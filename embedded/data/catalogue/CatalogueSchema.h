#pragma once

#include "embedded/data/engine/Database.h"
#include "embedded/data/engine/Progress.h"

namespace embedded {

/// The schema version of this program's catalogues.
inline constexpr int CatalogueSchemaVersion = 3;

/// Sees to it that a database is a catalogue of this program's schema: an empty one is filled with the
/// shipped tables, an older one is rewritten in one transaction. Raises `Error` when the database is damaged,
/// locked, newer or not writable while it has to be written, and `Cancelled` when `progress` asks for it
/// while an empty one is being filled; it is empty again then.
void EnsureCatalogue(Database& database, const Progress& progress = {});

/// Raises `Error` for a database that is no catalogue, or one of a newer program.
void RequireCatalogue(Database& database);

/// Creates the tables of a catalogue in a database that has none of them. To be called in a write
/// transaction, by whoever keeps the version of the schema.
void CreateCatalogueTables(Database& database);

/// The same, and fills them with what is shipped.
void FillCatalogue(Database& database, const Progress& progress = {});

/// The names of a catalogue's tables, in the order in which they are filled; without the one of
/// `EnsureGivenIds`.
CStringArray CatalogueTables();

/// Makes the table of the highest ids that were ever given to categories unless it is there. Whoever does not
/// import needs none, so not every catalogue has it.
void EnsureGivenIds(Database& database);
CString GivenIdsTable();

} // namespace embedded
