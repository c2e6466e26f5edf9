#pragma once

#include "platform/Text.h"

/// Rule files as the command line names them.
namespace cli {

/// The path text of a rule file that a person names: a text with a separator or ending in ".xml" is a native
/// path; any other is a configuration of the project's rule folder, unless only a file of that native path
/// exists. Raises `Refusal` for a path that has no path text.
CString ResolveRuleFile(const QString& text);

/// The path text of a native path. Raises `Refusal` when it has none (a name that holds a backslash).
CString ResolvePath(const QString& nativePath);

/// The path text of the configuration of that name. Raises `Refusal` for a name that cannot be one: it
/// becomes a file name, and the project's ini must give it back unchanged.
CString ConfigurationPath(const CString& name);

/// Raises `Refusal`, saying what is wrong and where, unless the file exists and can be read as a rule file.
/// To be asked before a store is built on a file: the store itself is silent about a file that it cannot
/// read, and its next save replaces it.
void CheckRuleFile(const CString& path);

/// The same, but a file that does not exist is fine, too.
void CheckRuleFileIfThere(const CString& path);

/// The rule file of the project's current configuration, checked by `CheckRuleFileIfThere`.
CString CheckedCurrentFile();

/// What `--config` names, or the project's current configuration when `text` is empty; checked. A file that
/// is named must exist if `mustExist` says so.
CString ChooseRuleFile(const QString& text, bool mustExist);

} // namespace cli
