#pragma once

#include "embedded/data/exchange/LibraryScope.h"
#include "embedded/data/exchange/TableExchange.h"

#include <memory>

namespace embedded {

/// The items of a library, one a row, each with its section and the titles on the way there.
std::unique_ptr<TableExchange> MakeBillExchange(LibraryScope scope);
std::unique_ptr<TableExchange> MakeQuotaExchange(LibraryScope scope);

} // namespace embedded
