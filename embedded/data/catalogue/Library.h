#pragma once

#include "embedded/data/catalogue/LibraryName.h"
#include "host/Records.h"

#include <optional>

namespace embedded {

/// A library of the catalogue.
struct Library
{
    LibraryRole role = LibraryRole::Bill;
    LibraryName name;
    int codeLength = -1;   ///< coding rule of bill numbers, -1 for none
    int suffixLength = -1; ///< the same
    CString items;         ///< the set of items that it offers; several libraries may offer the same
};

/// The word of a role in the catalogue and in a project's settings, and the role of a word; nothing when it
/// is no such word.
CString RoleWord(LibraryRole role);
std::optional<LibraryRole> RoleOfWord(const CString& word);
/// The role of a mode's quota library.
LibraryRole QuotaRole(SQdDeInfo::EQdDeMode mode);
/// What people call a library of a role.
CString RoleLabel(LibraryRole role);

/// The library of a role by its code, or the first of the role for an empty code; null when there is none.
const Library* FindLibrary(const CArray<Library>& libraries, LibraryRole role, const CString& code);
/// The same, but raises `Error`, which names the codes that there are, when there is none.
const Library& RequireLibrary(const CArray<Library>& libraries, LibraryRole role, const CString& code);
/// The same for the code that a project has stored: the `Error` says how to mend the project.
const Library& RequireStoredLibrary(const CArray<Library>& libraries, LibraryRole role, const CString& code);
/// Raises the `Error` that there is no library of that code, `label` being what people call such libraries.
[[noreturn]] void RefuseLibrary(const CString& code, const CString& label, const CArray<LibraryName>& known);
/// The names of the libraries of a role.
CArray<LibraryName> NamesOf(const CArray<Library>& libraries, LibraryRole role);

/// The code of the quota library to begin with beside a bill library: the first whose guide speaks of it, or
/// else the first; empty when there is none.
CString QuotaLibraryBeside(const CArray<LibraryName>& quotaLibraries, const CString& billLibrary);

/// The item set of the bill library that a quota library's guide speaks of; empty when it has no guide.
/// Numbers say something else in every bill library, so the guide counts only where that set is in use.
CString ItemsOfGuide(const CArray<Library>& libraries, const Library& quotaLibrary);

} // namespace embedded
