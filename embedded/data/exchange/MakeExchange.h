#pragma once

#include "embedded/data/exchange/LibraryScope.h"
#include "embedded/data/exchange/TableExchange.h"
#include "embedded/data/exchange/TableKind.h"

#include <memory>

namespace embedded {

/// The exchange of a kind of table. `scope` is the library of a bill, quota or guide table.
std::unique_ptr<TableExchange> MakeExchange(TableKind kind, const LibraryScope& scope);

} // namespace embedded
