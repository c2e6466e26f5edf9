#pragma once

#include "PictureHost.h"
#include "Scene.h"

/// The grid in both column plans and modes, and the combos. `host` gives the mode.
std::vector<Scene> ControlScenes(PictureHost& host);
