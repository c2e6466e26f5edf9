#pragma once

#include "embedded/data/exchange/TableExchange.h"

#include <memory>

namespace embedded {

/// The libraries themselves, one a row. Item sets that no library offers any more go with the last that did.
std::unique_ptr<TableExchange> MakeLibraryListExchange();

} // namespace embedded
