#pragma once

#include "platform/Text.h"
#include "tree/CPath.h"

/// The host's categories as plain lists, in the host's order.
namespace cli {

struct Attribute
{
    CString name;
    CString code;
};

struct SmallCategory
{
    int id = 0;
    CString name;
    int attType = 0;
    CArray<Attribute> attributes;
    CString text; ///< specialty, big and small category joined by backslashes
    CPath path{}; ///< the address of its rules: the first three fields
};

struct BigCategory
{
    int id = 0;
    CString name;
    CArray<SmallCategory> small;
};

struct Specialty
{
    int id = 0;
    CString name;
    CArray<BigCategory> big;
};

/// One specialty with everything below it. Raises `Refusal` when the host does not know it or cannot list its
/// categories.
Specialty ReadSpecialty(const CString& name);

/// All specialties.
CArray<Specialty> ReadCatalogue();

/// The text of the small category at an address of the present specialty; empty when there is none.
CString CategoryText(const CPath& path);

/// The address of the small category of that text; false when there is none.
bool FindCategory(const CString& text, CPath& path);

} // namespace cli
