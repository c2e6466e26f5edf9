#pragma once

#include "embedded/data/catalogue/Library.h"

namespace embedded {

/// The libraries that a new project's catalogue has, in its order.
CArray<Library> AllShippedLibraries();

/// The libraries of a role that a new project can choose from, in the catalogue's order.
CArray<LibraryName> ShippedLibraries(LibraryRole role);

} // namespace embedded
