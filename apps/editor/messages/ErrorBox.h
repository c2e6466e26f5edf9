#pragma once

#include <exception>
#include <functional>

namespace editor {

/// Shows an error to the user in a box.
void ShowError(const std::exception& error);

/// Runs what an event asks for and shows what it raises; nothing may travel through the toolkit's event loop.
/// False when something was raised.
bool RunGuarded(const std::function<void()>& step);

/// Runs steps in this way or a stricter one; gives what `RunGuarded` gives.
using StepRunner = std::function<bool(const std::function<void()>& step)>;

} // namespace editor
