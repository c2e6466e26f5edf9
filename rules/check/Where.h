#pragma once

#include "rules/Export.h"
#include "rules/model/Configuration.h"

#include <vector>

namespace rules {

/// A rule that gives an item.
struct ItemUse
{
    CString category{}; ///< joined by backslashes
    int position = 0;   ///< of the rule in its list, from 1
    int ruleId = 0;
    CString rule{};     ///< as the rule list shows it
    bool isBill = true; ///< else a quota item
    CString number{};
    CString name{};
    CString unit{};
    CString library{};
    CString billNumber{}; ///< of a quota item below a bill item: that one's number; else empty
};

/// The rules that give a bill or quota item, in the order of the file, by the item's number; of a bill item
/// also by the number without its suffix, which all numbers of it begin with.
KTQDDE_RULES_EXPORT std::vector<ItemUse> UsesOf(const Configuration& configuration, const CString& number);

} // namespace rules
