#pragma once

#include "cli/Arguments.h"
#include "embedded/data/TableImport.h"

namespace cli {

/// The words that name the kinds of tables on the command line, for a syntax line.
CString TableKindWords();

/// The kind that the first argument names. Raises `UsageError` when it names none.
embedded::TableKind NamedTableKind(const Arguments& arguments);

} // namespace cli
