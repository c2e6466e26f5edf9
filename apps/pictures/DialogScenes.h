#pragma once

#include "PictureHost.h"
#include "Scene.h"

/// The small dialogs, the main dialog's bare template and the message boxes. `host` answers the dialogs.
std::vector<Scene> DialogScenes(PictureHost& host);
