#pragma once

#include "embedded/data/host/CreateProject.h"

namespace test {

/// Puts a new project at a native path where nothing stands yet, as `embedded::CreateProject` does, of which
/// it is a copy: for tests that begin with a project, whereas those of its creation create theirs. A project
/// on an office knows which office that is and is created each time.
void PutNewProject(const QString& nativeFolder, const embedded::ProjectOptions& options = {});

} // namespace test
