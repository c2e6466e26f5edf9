#pragma once

#include "platform/Text.h"

namespace cli {

class Arguments;

/// To be called before a command writes a file that its user named. Raises `Refusal` when there is one at
/// that path text and `--force` was not given.
void RefuseToOverwrite(const Arguments& arguments, const CString& path);

} // namespace cli
