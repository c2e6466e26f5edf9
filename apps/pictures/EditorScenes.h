#pragma once

#include "SampleScenes.h"

/// The editor's windows over the sample project, beyond those that the documents show: menus and lists that
/// are open, boxes, and windows at their smallest. The project must outlive the scenes and their widgets.
std::vector<Scene> EditorScenes(SampleOnShow& sample);
