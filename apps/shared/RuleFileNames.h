#pragma once

#include "platform/Text.h"

/// How people name rule files.
namespace shared {

/// Whether a text names a file by its path: one that holds a separator or ends in ".xml". Any other names a
/// configuration.
bool NamesPath(const QString& text);

} // namespace shared
