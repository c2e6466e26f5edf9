#pragma once

#include "Scene.h"

/// The windows of the embedded host: pickers, calculator and cloud disk.
std::vector<Scene> HostWindowScenes();
