#pragma once

#include "platform/Text.h"

#include <functional>

namespace widgets {

/// Runs what an event asks for and shows what it raises, whatever its type, in a box with `caption`: nothing
/// may travel through the toolkit's event loop. False when something was raised.
bool RunGuarded(const std::function<void()>& step, const CString& caption);

} // namespace widgets
