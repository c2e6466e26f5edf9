#pragma once

#include "embedded/data/engine/Progress.h"
#include "host/Records.h"

namespace embedded {

/// What a new project is set to.
struct ProjectOptions
{
    SQdDeInfo::EQdDeMode mode = SQdDeInfo::BillMode;
    /// Name of the current specialty; empty means the first of the catalogue.
    CString spec{};
    /// Code of the bill library; empty means the first of the catalogue.
    CString billLibrary{};
    /// Code of the quota library of that mode; empty means the first whose guide speaks of the bill library,
    /// or else the first of the catalogue.
    CString quotaLibrary{};
    /// Name of the office whose catalogue the project reads; empty for a project with a catalogue of its own.
    CString office{};
};

/// Creates a project: the folder (one level, unless it exists), in it "app" (the application folder with the
/// catalogue, the template "QdDeConfig.def" and "AttributeInformation.xml"), "SysRegedit.ini" and last the
/// project file "project.ktqd" with settings and history. Of several programs that create the same project at
/// once one succeeds. A catalogue that stands in "app" already is the project's, and the options choose from
/// what it offers. A project on an office gets a copy of the office's catalogue instead, and one that stands
/// there and is no such copy is refused. Raises `Error` when a project stands there already, the specialty or
/// a library is not known or something cannot be written, `UnreachableError` and `RightsError` for an office
/// before anything is made. A creation that failed on the way can be repeated. Raises `Cancelled` when
/// `progress` asks for it; what it has made is gone again then.
void CreateProject(const QString& nativeFolder, const ProjectOptions& options, const Progress& progress = {});

} // namespace embedded
