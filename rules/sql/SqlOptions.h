#pragma once

#include "platform/Text.h"

namespace rules {

/// The databases whose SQL is written.
enum class SqlDialect { PostgreSql, Sqlite, DuckDb };

/// What the rules are written for as a query.
struct SqlOptions
{
    SqlDialect dialect = SqlDialect::PostgreSql;
    CString category;     ///< the text of the one small category to decide; empty for all
    bool isBill = true;   ///< bill items with their quota items below, or quota items alone
    CString billLibrary;  ///< code of the bill library in use; of no account for quota items alone
    CString quotaLibrary; ///< code of the quota library in use
};

} // namespace rules
