#pragma once

#include "platform/Export.h"
#include "platform/Text.h"

/// Where the rule files of a project lie and what they are called, as the module and hosts agree on it. All
/// paths are path texts; nothing is looked for or created here.
namespace host {

/// The folder of the rule files below an application folder.
KTQDDE_EXPORT CString RuleFolder(const CString& appFolder);

/// The template that new rule files are copied from, in an application folder. A rule file in every respect;
/// read only.
KTQDDE_EXPORT CString RuleTemplate(const CString& appFolder);

/// The rule file of a configuration in a folder.
KTQDDE_EXPORT CString RuleFileIn(const CString& folder, const CString& configuration);

/// The document element of a rule file.
KTQDDE_EXPORT CString RuleFileRoot();

} // namespace host
