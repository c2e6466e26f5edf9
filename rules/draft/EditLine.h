#pragma once

#include "rules/draft/Edit.h"

#include <QtCore/QByteArray>

#include <optional>

/// Edits as lines of a journal, so that a draft outlives its program.
namespace rules {

/// One line of UTF-8 without a line break: a check sum, a blank, and JSON with all fields of all rules. Any
/// text comes back as it was.
QByteArray LineOf(const Edit& edit);
/// The edit of a line; nothing when the line is not whole, or of another version of this program.
std::optional<Edit> EditOf(const QByteArray& line);

} // namespace rules
