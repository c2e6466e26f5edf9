#pragma once

#include "platform/Text.h"

namespace cli {

/// Runs the program on its arguments (without the program's own name) and gives the exit status: 0 done, 1
/// refused or failed with the reason on standard error, 2 wrong usage with the usage line on standard error.
/// Nothing is raised.
int RunProgram(const CStringArray& words) noexcept;

} // namespace cli
