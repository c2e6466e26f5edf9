#pragma once

#include "Scene.h"

/// The main dialog with rules in it, over a project of its own: both modes, both pages, the default rule,
/// grids of five and six columns, and a category without rules of its own.
std::vector<Scene> AutoConfigScenes();
