#pragma once

#include "platform/Text.h"

namespace embedded {
class EmbeddedHost;
}

namespace cli {

/// The name of an office, as a person names it. Raises `UsageError` for what cannot be one.
CString OfficeNamed(const CString& text);

/// Marks on standard error what goes on with the last state that a project has seen of its office. Nothing
/// for a project without an office, and where the office was reached and the project has its present state.
void TellIfWithoutOffice(embedded::EmbeddedHost& host);
/// The same for a verb that works on a project's catalogue without opening the project. Raises
/// `embedded::Error`.
void TellIfWithoutOffice(const QString& nativeProject);

} // namespace cli
