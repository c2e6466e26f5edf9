#pragma once

#include "embedded/data/catalogue/LibraryName.h"

namespace embedded {

/// A library of a project's catalogue.
struct LibraryEntry
{
    LibraryRole role = LibraryRole::Bill;
    LibraryName name;
    int items = 0;        ///< how many bill or quota items it offers
    bool isInUse = false; ///< whether the project uses it in that role
};

/// The libraries of a project, in the catalogue's order. Unlike a host, this and `UseLibrary` also work on a
/// project whose catalogue lacks a library that it uses. Raise `Error`.
CArray<LibraryEntry> ListLibraries(const QString& nativeProject);

/// Stores in the project that it uses a library, in the role that the library has. Whoever has the project
/// open sees it after opening it again. Raises `Error` when there is no such library, too.
LibraryEntry UseLibrary(const QString& nativeProject, const CString& code);

/// What a person should know of a quota library, when it is used beside the bill library of that code and its
/// guide is of another one: a sentence without its final mark. Empty when the two match or the quota library
/// has no guide.
CString GuideHint(LibraryRole role, const LibraryName& quota, const CString& bill);

} // namespace embedded
