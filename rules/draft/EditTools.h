#pragma once

#include "rules/draft/Draft.h"
#include "rules/draft/ListChange.h"

/// What the makers of edits share.
namespace rules {

/// The category in its present state. Raises `std::invalid_argument` when the draft has none of that text.
SmallCategoryPtr CategoryOf(const Draft& draft, const CString& category);

/// Rising, each once. Raises `std::out_of_range` for one that is none of the list.
std::vector<std::size_t> PlacesIn(const SmallCategory& category, std::vector<std::size_t> positions);

/// Before which index rules may come at the latest: that of a default rule at the end, or the end.
std::size_t EndOf(const SmallCategory& category);

/// What a rule becomes among several; the places in `places` are rising.
template <typename Make>
void AppendChanges(const SmallCategory& category, const std::vector<std::size_t>& places, Make make,
                   Edit& edit)
{
    ListChange change(category);
    std::size_t next = 0;
    for (const std::size_t place : places) {
        Rule rule = category.rules[place];
        make(rule);
        if (rule == category.rules[place]) continue;
        change.KeepRange(next, place);
        change.Put(std::move(rule));
        next = place + 1;
    }
    change.KeepRange(next, category.rules.size());
    change.AppendTo(edit);
}

} // namespace rules
