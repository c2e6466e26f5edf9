#pragma once

#include "house/Doors.h"
#include "house/Sources.h"

#include <QtCore/QStringList>

namespace house {

/// What is wrong with the house, a sentence each: faults of the table, sources that stand in no room,
/// includes without a door, library headers that the room may not see, includes that lead nowhere, and
/// sources that include each other. Headers in quotes are looked for as the compiler does: beside the file
/// that includes them, in src/, at the top and in apps/.
QStringList FaultsOf(const QList<Source>& sources, const Doors& doors);

/// The folders that hold more of these sources than the table allows.
QStringList CrowdedFolders(const QList<Source>& sources, const Doors& doors);

} // namespace house
