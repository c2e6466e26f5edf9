#pragma once

#include "rules/bill/QuantityTable.h"
#include "rules/bill/Units.h"
#include "rules/check/BillNumberForm.h"
#include "rules/check/Cover.h"
#include "rules/model/Facts.h"

#include <map>
#include <set>
#include <unordered_map>

namespace rules {

/// What a library knows of one of its items.
struct LibraryItem
{
    CString name{};
    CString unit{};
    /// Of a quota item: the bill items that the guide hangs it on, by their numbers without a suffix; empty
    /// where no guide speaks of it.
    CStringArray bills{};
};

/// A library in use.
struct LibraryFacts
{
    CString code{};
    BillNumberForm form{}; ///< of a bill library
    /// By number, those of a bill library without a suffix; empty when the library cannot be looked at.
    std::unordered_map<CString, LibraryItem> items{};
};

/// What the checks go by besides the rules, as plain values, handed in by whoever has a catalogue. What is
/// left empty is not checked.
struct CheckFacts
{
    bool isBillMode = true;
    LibraryFacts bills{};
    LibraryFacts quotas{}; ///< that of the mode

    CatalogueFacts attributes{}; ///< by which components are matched, as for pricing
    /// The attributes that the editor offers for a category, by category text. A category that is not here is
    /// none that the host has.
    std::map<CString, CategoryFacts> categories{};
    std::set<CString> specialties{}; ///< those that the host has

    CalculationItems calculationItems{};       ///< each one's expression
    std::map<CString, Dimension> dimensions{}; ///< of calculation items
    std::set<CString>
        names{}; ///< that formulas may use besides calculation items and attributes of the category

    long long effort = UsualEffort; ///< that the rules of one category may take
};

} // namespace rules
