#include "embedded/data/project/NumberRegister.h"

namespace embedded {

NumberRegister::~NumberRegister() = default;

} // namespace embedded
