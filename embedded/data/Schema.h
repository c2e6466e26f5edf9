#pragma once

#include "embedded/data/Database.h"

#include <functional>

namespace embedded {

/// Brings a database to the schema version that this program knows. A new file is filled by `create` inside
/// one write transaction, so that of several programs that open it at the same moment exactly one fills it
/// and the others wait for it. Raises `Error` for a newer version and for a file that is not ours.
void EnsureSchema(Database& database, int version, const std::function<void()>& create);

/// Raises `Error` unless the database has exactly that schema version.
void RequireSchema(Database& database, int version);

} // namespace embedded
