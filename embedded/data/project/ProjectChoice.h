#pragma once

#include "embedded/data/catalogue/Library.h"
#include "embedded/data/engine/Database.h"

namespace embedded {

/// What a new project can be set to.
struct ProjectChoice
{
    CArray<Library> libraries;
    CStringArray specs; ///< names of the specialties
};

/// What this program ships.
ProjectChoice ShippedChoice();
/// What a catalogue offers. Raises `Error`.
ProjectChoice ReadChoice(Database& catalogue);

} // namespace embedded
