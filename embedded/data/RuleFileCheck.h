#pragma once

#include "xml/Dom.h"

#include <optional>

namespace embedded {

/// Why a rule file cannot be read, with line and column, or that its document element is not `rootName`;
/// nothing when it can be read or does not exist. To be asked before a dialog opens on a file or a script
/// works on it: the module takes a file that it cannot read for an empty one without a word, and its next
/// save replaces it. `path` is a path text.
std::optional<xml::LoadReason> CheckRuleFile(const CString& path, const CString& rootName);

} // namespace embedded
