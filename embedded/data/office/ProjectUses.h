#pragma once

#include "embedded/data/office/Office.h"

#include <QtCore/QDateTime>

#include <map>

namespace embedded {

/// What the other projects of an office have to know of one: what of the catalogue it cannot do without.
struct ProjectUse
{
    CString project;   ///< by which it is told apart: the native path of its folder, and its machine
    CString specialty; ///< the current one
    std::map<CString, CString> libraries; ///< the codes of those in use, by the words of their roles
    QDateTime at{};                       ///< when the office was told, UTC, on a day or so
};

/// Tells the office what a project uses, unless it has known that since yesterday. Raises `RightsError` for
/// readers, whose projects the office does not know, and `Error`. Nothing for a `use` that names no project.
void NoteProjectUse(Office& office, const ProjectUse& use);

/// What the office's projects use, but for the one of that name, by name. Raises `Error`.
CArray<ProjectUse> ProjectUses(Database& office, const CString& butFor);

} // namespace embedded
