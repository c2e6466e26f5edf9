#pragma once

#include "embedded/data/catalogue/Library.h"

namespace embedded {

/// The library whose items go between the catalogue and a file, and the item sets that are tied to it.
struct LibraryScope
{
    Library library;
    CString bills;       ///< of a quota library: the bill items that its guide speaks of; empty for no guide
    CStringArray guides; ///< of a bill library: the quota items whose guides speak of its items

    LibraryScope() = default;
    LibraryScope(const CArray<Library>& libraries, Library of);
};

} // namespace embedded
