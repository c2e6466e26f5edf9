#pragma once

#include "platform/Export.h"
#include "platform/Text.h"

/// Makes `filePath` the rule file of the project's current configuration. The file that was current is saved
/// first if it is another one. True when the file was taken; `message` is then left alone. Else `message`
/// says that the file does not fit, the project's ini stays as it was, and a missing file has been reported
/// by a warning, too. Exported under this undecorated name. Errors raised below go on to the caller.
extern "C" KTQDDE_EXPORT bool RefreshAutoConfig(CString& message, const CString& filePath);
