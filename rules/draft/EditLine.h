#pragma once

#include "rules/draft/Edit.h"

#include <QtCore/QByteArray>

#include <optional>

/// Edits as lines of a journal, so that a draft outlives its program.
namespace rules {

/// One line of UTF-8 without a line break: JSON, all fields of all rules, and a check sum.
QByteArray LineOf(const Edit& edit);
/// The edit of a line; nothing when it is not whole.
std::optional<Edit> EditOf(const QByteArray& line);

} // namespace rules
