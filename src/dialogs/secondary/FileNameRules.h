#pragma once

#include "platform/Text.h"

namespace dialogs {

/// Why no file of that name can be kept on every file system that rule files travel over, as a sentence
/// without its final mark; empty when it can. `fileName` has no folder. Looked at are: control characters and
/// broken characters, names of devices in any letter case and with any extension, more than 255 bytes in
/// UTF-8. A full stop or blank before the extension is part of an ordinary name.
CString FileNameFault(const CString& fileName);

} // namespace dialogs
