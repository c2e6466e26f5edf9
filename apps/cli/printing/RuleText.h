#pragma once

#include "cli/reading/CategoryLists.h"
#include "presenter/CQdDeConfigPresenter.h"

#include <vector>

namespace cli {

/// The rules of one small category.
struct CategoryRules
{
    SmallCategory category;
    std::vector<ConfigNode*> rules; ///< the presenter's
};

/// The rules of every small category of a specialty that `filter` selects, in the host's order. The filter is
/// a category text, its beginning up to a backslash, or the name of a small category; empty selects
/// everything. Raises `Refusal` when it selects nothing, and when the presenter holds none of the categories.
std::vector<CategoryRules> CollectRules(CQdDeConfigPresenter& presenter, const CString& spec,
                                        const CString& filter);

/// Whether the rules say nothing: one default rule without items.
bool HoldsNothing(const CategoryRules& category);

/// The rules of a category as a table under a heading, the way a cost engineer reads them: one rule after the
/// other, its conditions one below the other, beside them its bill items with their quota items.
CString RuleTable(const CategoryRules& category);

} // namespace cli
