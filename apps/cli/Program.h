#pragma once

#include "platform/Text.h"

namespace cli {

/// Runs the program on its arguments (without the program's own name) and gives the exit status (see
/// `ExitStatus`). Nothing is raised.
int RunProgram(const CStringArray& words) noexcept;

} // namespace cli
