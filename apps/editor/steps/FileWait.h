#pragma once

#include "embedded/data/history/RuleFileLock.h"

namespace editor {

/// For one wait for a rule file that another program holds: a window says who holds which file, and its
/// button ends the wait. A wait that ends within `QuietTime` shows none. To be used on the windows' thread.
embedded::RuleFileLock::GoOn WaitInWindow();

} // namespace editor
