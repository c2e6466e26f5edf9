#pragma once

#include "platform/Text.h"

#include <array>

namespace embedded {

/// Which place a library takes.
enum class LibraryRole {
    Bill,         ///< the bill library
    QuotaOfBills, ///< the quota library of bill mode
    Quota,        ///< the quota library of quota mode
};

inline constexpr std::array AllLibraryRoles{LibraryRole::Bill, LibraryRole::QuotaOfBills, LibraryRole::Quota};

/// What a person tells a library by. The code is what rule files hold.
struct LibraryName
{
    CString code;
    CString name;
    CString local; ///< region
    CString year;
    CString billLibrary{}; ///< of a quota library: code of the bill library that its guide speaks of
};

} // namespace embedded
