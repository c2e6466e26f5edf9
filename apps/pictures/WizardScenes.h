#pragma once

#include "Scene.h"

/// The wizard form of the main dialog, over a project of its own: with and without an explanation, with
/// 上一步 allowed and not, with short and with long library names.
std::vector<Scene> WizardScenes();
