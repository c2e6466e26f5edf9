#pragma once

#include "editor/project/Project.h"
#include "shared/RuleFileState.h"

namespace editor {

/// Asks whether to leave only the first of each specialty in a rule file that holds one more than once, and
/// does so: the first is what the module reads, and would not be any more after its next save. A copy goes
/// into the history before. True when only the first is left; false when the user does not want that, or
/// wants it but not without a copy that could not be kept, and the file is as it was then. `state` is that of
/// such a file (`Repeated`); the project must be the host. Waits for other programs and raises as
/// `Project::KeepCopy` does, and raises `xml::Error` when the file cannot be read or written.
bool AskToKeepFirst(Project& project, const shared::RuleFileState& state);

} // namespace editor
