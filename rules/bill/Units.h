#pragma once

#include "rules/model/Decimal.h"

namespace rules {

/// A unit of measure as items have it, such as "m", "10m2" or "100kg".
struct UnitOfMeasure
{
    Decimal multiple{1}; ///< the whole number that the text begins with, at least 1
    unsigned digits =
        0; ///< behind the point of a quantity in the base unit: t 3; m, m2, m3, kg 2; pieces none

    /// Reads a unit. "m²", "㎡" and "m2" are one unit.
    KTQDDE_RULES_EXPORT static UnitOfMeasure Of(const CString& unit);

    /// A sum in the base unit as it is written in this one: rounded once, in the base unit, and then divided.
    KTQDDE_RULES_EXPORT CString Format(const Decimal& sumInBaseUnit) const;
};

} // namespace rules
