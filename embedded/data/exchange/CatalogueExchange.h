#pragma once

#include "embedded/data/exchange/TableExchange.h"

#include <memory>

namespace embedded {

/// Specialties, big and small categories: one row a small category, which makes the levels above it when they
/// are missing.
std::unique_ptr<TableExchange> MakeCatalogueExchange();

} // namespace embedded
