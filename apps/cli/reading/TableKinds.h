#pragma once

#include "cli/reading/Arguments.h"
#include "embedded/data/exchange/TableKind.h"

namespace cli {

/// The words that name the kinds of tables on the command line, for a syntax line.
CString TableKindWords();

/// What `--library` says in the help of a verb that takes a kind.
Option LibraryOption();

/// The kind that the first argument names. Raises `UsageError` when it names none, and when
/// `--library` is given for a kind that belongs to no library.
embedded::TableKind NamedTableKind(const Arguments& arguments);

} // namespace cli
