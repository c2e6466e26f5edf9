#pragma once

#include "embedded/data/engine/Database.h"

#include <functional>

namespace embedded {

/// Brings a database to the schema version that this program knows. A new file is filled by `create`, an
/// older one is rewritten by `upgrade`, inside one write transaction: of several programs that open the
/// file at the same moment exactly one does it and the others wait for it. Raises `Error` for a newer version
/// and for a file that is not ours, and `ReadOnlyError` for one that has to be rewritten and is read-only.
void EnsureSchema(Database& database, int version, const std::function<void()>& create,
                  const std::function<void()>& upgrade);

/// Raises `Error` unless the database has exactly that schema version.
void RequireSchema(Database& database, int version);

} // namespace embedded
