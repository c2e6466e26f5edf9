#include "embedded/data/engine/Engine.h"

namespace embedded {

Engine::~Engine() = default;

} // namespace embedded
