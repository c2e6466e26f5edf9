#pragma once

#include "embedded/data/engine/Database.h"
#include "embedded/data/engine/Progress.h"

#include <functional>

namespace embedded {

/// The version of an office's schema that this program makes and knows.
constexpr int OfficeSchemaVersion = 2;

/// What brings an office from one schema version to the next one.
using OfficeStep = std::function<void(Database&)>;

/// Makes the schema, the tables, the functions and the roles of an office, and fills its catalogue with what
/// is shipped, in one transaction: of several programs that do so at once exactly one does. Raises `Error`
/// when an office stands there already, and `Cancelled`; nothing has changed then.
void CreateOfficeSchema(Database& database, const Progress& progress = {});

/// The steps that this program knows, to `OfficeSchemaVersion`.
CArray<OfficeStep> KnownOfficeSteps();

/// Brings an office of an older version up in one transaction: `steps` begins with the one from version 1 to
/// version 2 and makes the last version one more than there are steps. Gives the version that it had. Raises
/// `Error` when there is no office or one of a newer version, and what the steps raise; nothing has changed
/// then.
int UpgradeOfficeSchema(Database& database, const CArray<OfficeStep>& steps);
/// The same with the steps that this program knows.
int UpgradeOfficeSchema(Database& database);

/// Raises `Error` unless an office of this program's version stands there, and tells what to do about it.
void RequireOffice(Database& database);

} // namespace embedded
