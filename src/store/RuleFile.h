#pragma once

#include "platform/Export.h"
#include "platform/Text.h"

/// The fixed words and places around a rule file.
namespace store {

/// The document element of a rule file.
KTQDDE_EXPORT CString RootName();

/// Name of the configuration when a project names none.
KTQDDE_EXPORT CString DefaultConfigName();

/// The folder that the host's cloud-disk dialog shows.
KTQDDE_EXPORT CString TemplateFolder();

/// The folder of the rule files: the application folder's "\自动套配置". Not created here.
KTQDDE_EXPORT CString RuleFolder();

/// The template that new rule files are copied from: the application folder's "\QdDeConfig.def". A rule file
/// in every respect; read only.
KTQDDE_EXPORT CString TemplatePath();

/// The current version of the program as text, as it stands; may be empty.
KTQDDE_EXPORT CString VersionText();

/// The same, with "1.0.0" for an empty text.
KTQDDE_EXPORT CString VersionTextOrDefault();

} // namespace store
