#pragma once

#include "platform/Text.h"

/// How people name rule files.
namespace shared {

/// Whether a text names a file by its path: one that holds a separator or ends in ".xml". Any other names a
/// configuration.
bool NamesPath(const QString& text);

/// The path text of a configuration's rule file in a folder.
CString RuleFileIn(const CString& folder, const CString& configuration);

} // namespace shared
