#pragma once

#include "embedded/data/catalogue/CatalogueData.h"

namespace embedded {

/// A name whose numbers a take-off table may hold in every category, also where the category has no such
/// attribute. An attribute of the category has its unit from the catalogue.
struct AttributeUnit
{
    CString name; ///< as conditions and expressions have it
    CString code; ///< by which a column may go instead; may be empty
    CString unit; ///< such as "mm"; empty for a number without one
};

/// The names that the program ships, in the order of their table.
CArray<AttributeUnit> ShippedAttributeUnits();

/// The unit that the program ships for a name; empty for none.
CString ShippedUnitOf(const CString& name);

/// The values that an attribute code offers: those of the drop list of that name, or else of the code's first
/// list, where lists serve it; none for free entry and for a code that is not known.
CStringArray ValuesOf(const CatalogueData& data, const CString& code, const CString& dropList);

} // namespace embedded
