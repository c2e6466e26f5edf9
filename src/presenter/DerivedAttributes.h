#pragma once

#include "platform/Export.h"
#include "platform/Text.h"

/// An attribute that conditions of a category may name beyond those of the host.
struct DerivedAttribute
{
    CString name; ///< display name
    CString code;
};

/// The attributes that a category has beyond those of the host and 具体构件, which every category has; told
/// by the category's full text. Two of them share a code on purpose.
KTQDDE_EXPORT CArray<DerivedAttribute> DerivedAttributes(const CString& categoryText);
