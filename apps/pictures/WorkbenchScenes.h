#pragma once

#include "SampleScenes.h"

/// The editor's window with its docks, and the windows that it opens over rules, on the sample project, which
/// must outlive the scenes and their widgets and gets a table of components.
std::vector<Scene> WorkbenchScenes(SampleOnShow& sample);
