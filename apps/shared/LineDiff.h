#pragma once

#include "platform/Text.h"

namespace shared {

/// One difference between two texts: consecutive lines that went and the lines that came in their place.
struct LineChange
{
    qsizetype line = 0; ///< one-based, in the second text
    CStringArray removed;
    CStringArray added;
};

/// What has to change in `before` to give `after`, with as few lines as possible. Texts that differ over
/// thousands of lines give one change that replaces all of these.
CArray<LineChange> CompareLines(const CStringArray& before, const CStringArray& after);

} // namespace shared
