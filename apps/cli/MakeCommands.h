#pragma once

#include "cli/commands/Command.h"

#include <memory>
#include <vector>

namespace cli {

/// All verbs, in the order of the help text.
std::vector<std::unique_ptr<Command>> MakeCommands();

} // namespace cli
