#pragma once

#include "embedded/data/sqlite/Database.h"
#include "embedded/data/sqlite/Progress.h"

namespace embedded {

/// Sees to it that a database is a catalogue of this program's schema: an empty one is filled with the
/// shipped tables, an older one is rewritten in one transaction. Raises `Error` when the database is damaged,
/// locked, newer or not writable while it has to be written, and `Cancelled` when `progress` asks for it
/// while an empty one is being filled; it is empty again then.
void EnsureCatalogue(Database& database, const Progress& progress = {});

} // namespace embedded
