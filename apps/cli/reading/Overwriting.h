#pragma once

#include "platform/Text.h"

namespace cli {

class Arguments;

/// To be called before a command writes a file that its user named. Raises `Refusal` when there is one at
/// that path text and `--force` was not given, and even then when it is a file that a project cannot do
/// without: its databases, its profile and the copies in its history.
void RefuseToOverwrite(const Arguments& arguments, const CString& path);

} // namespace cli
