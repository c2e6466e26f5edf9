#pragma once

namespace editor {

/// Runs the program and gives its exit status; see `CommandLine::HelpText`. Raises nothing: what goes wrong
/// is told on standard error.
int RunProgram(int& argc, char** argv) noexcept;

} // namespace editor
