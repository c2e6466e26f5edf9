#pragma once

#include "embedded/data/exchange/TableExchange.h"

#include <memory>

namespace embedded {

/// Attributes of small categories, one a row, each with where the values of its code come from.
std::unique_ptr<TableExchange> MakeAttributeExchange();

} // namespace embedded
