#pragma once

#include "embedded/data/exchange/TableExchange.h"

#include <memory>

namespace embedded {

/// Calculation items with their rules, one a row for every small category that an item serves, or one without
/// a category.
std::unique_ptr<TableExchange> MakeCalculationExchange();

} // namespace embedded
