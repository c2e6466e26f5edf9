#pragma once

#include "platform/Export.h"
#include "platform/Text.h"

namespace host {

/// The path text of the ini that stands beside a project file, given by its path text. The module keeps the
/// current configuration in it, and hosts may keep entries of their own.
KTQDDE_EXPORT CString ProjectIni(const CString& projectFile);

} // namespace host
