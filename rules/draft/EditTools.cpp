#include "rules/draft/EditTools.h"

#include <algorithm>
#include <stdexcept>

namespace rules {

SmallCategoryPtr CategoryOf(const Draft& draft, const CString& category)
{
    SmallCategoryPtr found = draft.Find(category);
    if (!found) throw std::invalid_argument("the draft has no such category");
    return found;
}

std::vector<std::size_t> PlacesIn(const SmallCategory& category, std::vector<std::size_t> positions)
{
    std::sort(positions.begin(), positions.end());
    positions.erase(std::unique(positions.begin(), positions.end()), positions.end());
    if (!positions.empty() && positions.back() >= category.rules.size())
        throw std::out_of_range("the category has no rule at that position");
    return positions;
}

std::size_t EndOf(const SmallCategory& category)
{
    const std::vector<Rule>& rules = category.rules;
    return !rules.empty() && rules.back().isDefault ? rules.size() - 1 : rules.size();
}

} // namespace rules
