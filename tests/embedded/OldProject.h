#pragma once

#include "embedded/TestProject.h"

namespace test {

/// Makes of a new project one that an older program has made: a catalogue of version 1 with a bill item, a
/// quota item and a category of a person's own, and no choice of libraries.
void MakeOld(const TestProject& project);

} // namespace test
