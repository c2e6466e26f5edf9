#pragma once

#include "embedded/data/exchange/LibraryScope.h"
#include "embedded/data/exchange/TableExchange.h"

#include <memory>

namespace embedded {

/// Which items of a quota library go with an item of the bill library that its guide speaks of, one pair a
/// row.
std::unique_ptr<TableExchange> MakeGuideExchange(LibraryScope scope);

} // namespace embedded
