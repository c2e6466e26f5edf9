#pragma once

namespace rules {

/// The databases whose SQL is written.
enum class SqlDialect { PostgreSql, Sqlite, DuckDb };

} // namespace rules
