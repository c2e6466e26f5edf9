#pragma once

#include "editor/docks/details/ItemTree.h"

namespace editor {

/// The lines of the chosen rules, each bill item's quota items behind it. Of several rules one line for each
/// number.
std::vector<ItemLine> LinesOf(const RulesInView& view, const ProjectFacts& facts);

/// The item at a place of a rule; null for none. Of quota items in quota mode `bill` is -1.
rules::BillItem* BillAt(rules::Rule& rule, const ItemPlace& place);
rules::QuotaItem* QuotaAt(rules::Rule& rule, const ItemPlace& place);
/// The list that holds the quota item, or to which one could be added.
std::vector<rules::QuotaItem>* QuotasAt(rules::Rule& rule, const ItemPlace& place);

} // namespace editor
