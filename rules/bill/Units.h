#pragma once

#include "rules/model/Decimal.h"

namespace rules {

/// What a quantity counts.
enum class Dimension { Unknown, Length, Count, Area, Volume, Weight };

/// A unit of measure as items have it, such as "m", "10m2", "100kg" or "吨".
struct UnitOfMeasure
{
    Decimal multiple{1}; ///< the whole number that the text begins with, at least 1
    /// Behind the point of a quantity in the base unit: t and km 3; m, m2, m3, kg 2; others none. The
    /// national standard for installation works names those but km, which would lose up to 500 m if it were
    /// whole.
    unsigned digits = 0;
    /// `Unknown` for units that count anything, such as 项; pieces of any name are a `Count`.
    Dimension dimension = Dimension::Count;

    /// Reads a unit. "m²", "㎡" and "m2" are one unit, and so are a sign and its name: "t" and "吨".
    KTQDDE_RULES_EXPORT static UnitOfMeasure Of(const CString& unit);

    /// A sum in the base unit as it is written in this one: rounded once, in the base unit, and then divided.
    KTQDDE_RULES_EXPORT CString Format(const Decimal& sumInBaseUnit) const;
};

} // namespace rules
