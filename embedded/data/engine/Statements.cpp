#include "embedded/data/engine/Statements.h"

namespace embedded {

Statements::~Statements() = default;

} // namespace embedded
