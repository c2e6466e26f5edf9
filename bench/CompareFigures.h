#pragma once

#include "bench/Figures.h"

namespace bench {

/// Prints its line and tells whether the bar is met. Writes a second file beside the input.
bool Compare(const Input& input, int rounds);

} // namespace bench
