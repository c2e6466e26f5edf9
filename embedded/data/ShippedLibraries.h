#pragma once

#include "embedded/data/Library.h"

namespace embedded {

/// The libraries that a new project's catalogue has, in its order.
CArray<Library> AllShippedLibraries();

} // namespace embedded
