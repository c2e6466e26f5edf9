#pragma once

#include "editor/docks/details/ChosenRules.h"

#include <compare>
#include <vector>

namespace editor {

/// Where an item stands among those of a rule, or among the lines of several rules.
struct ItemPlace
{
    int bill = -1;  ///< index of the bill item; -1 in quota mode
    int quota = -1; ///< index of the quota item; -1 for the bill item itself

    bool IsBill() const noexcept { return quota < 0; }
    auto operator<=>(const ItemPlace&) const = default;
};

/// What the tree shows of an item.
struct ItemLine
{
    ItemPlace place{};
    int id = 0;
    CString number{};
    CString name{};
    CString unit{};
    CString formula{};
    CString annex{};
    bool isForeign = false;      ///< of a library that is not in use
    std::size_t rules = 1;       ///< in how many of the chosen rules it is
    bool formulasDiffer = false; ///< in these

    bool operator==(const ItemLine&) const = default;
};

/// The lines of the chosen rules, each bill item's quota items behind it. Of several rules one line for each
/// number.
std::vector<ItemLine> LinesOf(const RulesInView& view, const ProjectFacts& facts);

/// The item at a place of a rule; null for none. Of quota items in quota mode `bill` is -1.
rules::BillItem* BillAt(rules::Rule& rule, const ItemPlace& place);
rules::QuotaItem* QuotaAt(rules::Rule& rule, const ItemPlace& place);
/// The list that holds the quota item, or to which one could be added.
std::vector<rules::QuotaItem>* QuotasAt(rules::Rule& rule, const ItemPlace& place);

} // namespace editor
