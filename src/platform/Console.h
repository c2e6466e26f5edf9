#pragma once

#include "platform/Export.h"
#include "platform/Text.h"

#include <optional>

/// Standard streams as UTF-8, whatever the machine's settings. On a Windows console the code page is set.
namespace platform {

/// To be called first in `main()`, before the application object: makes the process use UTF-8.
KTQDDE_EXPORT void UseUtf8Console();

/// Writes `text` to standard output as it stands. False when it could not be written (a closed pipe).
KTQDDE_EXPORT bool WriteOut(const CString& text);
/// Writes `text` to standard error.
KTQDDE_EXPORT void WriteErr(const CString& text);
/// Whether standard error goes to a terminal, so that progress shown there is seen by a person.
KTQDDE_EXPORT bool ErrIsTerminal();
/// Whether a person can be asked: standard input and standard error both go to a terminal.
KTQDDE_EXPORT bool CanAsk();
/// The next line of standard input without its end; nothing at the end of the input.
KTQDDE_EXPORT std::optional<CString> ReadLine();

} // namespace platform
