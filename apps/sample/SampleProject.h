#pragma once

#include "embedded/data/host/CreateProject.h"
#include "embedded/data/host/EmbeddedHost.h"

#include <QtCore/QString>

namespace sample {

/// Makes the sample project: a project in bill mode for the specialty 给排水, whose current configuration is
/// the sample rule file. Beside it lie rule files for 给排水, 电气 and 暖通 ("给排水示例" and so on). The
/// module has written the current file once, which adds the categories that the sample leaves out, so that
/// what changes later is what a person changes. No host needs to be installed. Raises `embedded::Error` and
/// `platform::FileError`, for a folder that holds a project among others.
void CreateSampleProject(const QString& nativeFolder);

/// The two parts of it, for whoever makes the project on another thread: what `embedded::CreateProject` is
/// given, and the rule files, which the module writes into the new project on the thread of the installed
/// host.
embedded::ProjectOptions SampleOptions();
void AddSampleRules(const QString& nativeProject);

/// The name of the configuration beside the current one that prices the sample take-off table.
CString TakeoffConfiguration();
/// Writes the sample take-off table for 给排水 to a path text. Raises `platform::FileError`.
void WriteSampleTakeoff(const CString& path);

} // namespace sample
