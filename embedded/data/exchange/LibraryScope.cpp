#include "embedded/data/exchange/LibraryScope.h"

#include <utility>

namespace embedded {

LibraryScope::LibraryScope(const CArray<Library>& libraries, Library of) : library(std::move(of))
{
    if (library.role != LibraryRole::Bill) {
        bills = ItemsOfGuide(libraries, library);
        return;
    }
    for (const Library& quota : libraries) {
        if (ItemsOfGuide(libraries, quota) == library.items && !guides.contains(quota.items))
            guides.append(quota.items);
    }
}

} // namespace embedded
