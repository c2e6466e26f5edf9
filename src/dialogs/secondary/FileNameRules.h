#pragma once

#include "platform/Text.h"

namespace dialogs {

/// Why no file of that name can be kept on every file system that rule files travel over, as a sentence
/// without its final mark; empty when it can. `fileName` has no folder. Looked at are: control characters and
/// broken characters, names of devices in any letter case and with any extension, a full stop or blank at the
/// end (before ".xml", too, where it would be lost when the extension is hidden), more than 255 bytes in
/// UTF-8.
CString FileNameFault(const CString& fileName);

} // namespace dialogs
