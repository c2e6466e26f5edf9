#pragma once

#include "cli/reading/Arguments.h"
#include "rules/merge/Conflict.h"

#include <optional>
#include <vector>

/// How conflicts of a merge are answered on the command line.
namespace cli {

/// The option that answers all of them.
Option PreferOption();
/// The side that it names; nothing without it. Raises `UsageError` when it names none.
std::optional<rules::Side> PreferredSide(const Arguments& arguments);

/// Tells every conflict on standard error. Answers with `preferred`, or asks when that is nothing and there
/// is a terminal to ask at. As many answers as were given: fewer than conflicts where one has none.
std::vector<rules::Side> TellAndAnswer(const std::vector<rules::Conflict>& conflicts,
                                       std::optional<rules::Side> preferred);

} // namespace cli
