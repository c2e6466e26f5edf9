#pragma once

#include "embedded/data/catalogue/Library.h"
#include "embedded/data/catalogue/LibraryContents.h"
#include "embedded/data/engine/Database.h"

namespace embedded {

/// The libraries of a catalogue, in their order. Raises `Error`.
CArray<Library> ReadLibraries(Database& catalogue);

/// The numbers of the items of a bill library. Raises `Error`.
CStringArray ReadBillNumbers(Database& catalogue, const Library& bill);

/// What one bill library and one quota library hold. The quota items come with the bill items that they
/// usually stand under, if the guide speaks of that bill library. Raises `Error`.
LibraryContents ReadContents(Database& catalogue, const CArray<Library>& libraries, const Library& bill,
                             const Library& quota);

} // namespace embedded
