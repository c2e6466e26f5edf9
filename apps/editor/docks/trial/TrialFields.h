#pragma once

#include "rules/bill/BillBuilder.h"

#include <vector>

namespace editor {

/// One thing that a component of a category may have, and that a trial asks for.
struct TrialField
{
    enum class Kind {
        Tested,   ///< an attribute that conditions test
        Quantity, ///< a name that formulas of the rules use
        Offered,  ///< another attribute of the category
    };

    Kind kind = Kind::Offered;
    CString name{};
    CString unit{};
    /// What one may choose: the value list, what conditions name, and where no list has numbers, those at the
    /// bounds of ranges and between them.
    CStringArray choices{};

    bool operator==(const TrialField&) const = default;
};

/// Those of a category: in the order in which the rules test them, then by first use in a formula, then as
/// offered. `attributes` are those that the editor offers.
std::vector<TrialField> TrialFieldsOf(const rules::SmallCategory& category,
                                      const rules::CategoryFacts& attributes,
                                      const rules::PricingFacts& facts);

} // namespace editor
