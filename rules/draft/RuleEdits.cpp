#include "rules/draft/RuleEdits.h"

#include "rules/compare/Content.h"
#include "rules/draft/EditTools.h"
#include "rules/draft/PartNumbers.h"
#include "rules/draft/Wording.h"

#include <algorithm>
#include <stdexcept>
#include <unordered_map>
#include <utility>

using namespace Qt::StringLiterals;

namespace rules {

namespace {

/// Those that are no default rules.
std::vector<std::size_t> WithoutDefaults(const SmallCategory& category, std::vector<std::size_t> places)
{
    std::erase_if(places, [&](std::size_t place) { return category.rules[place].isDefault; });
    return places;
}

/// The rules in another order of their indexes.
Edit Reordered(const SmallCategory& category, const std::vector<std::size_t>& order, const CString& text)
{
    ListChange change(category);
    for (const std::size_t index : order)
        change.Keep(index);
    Edit edit{text, {}};
    change.AppendTo(edit);
    return edit;
}

/// The way from the rules of a category to `wanted`: rules that are the same stay.
void AppendWay(const SmallCategory& category, const std::vector<Rule>& wanted, Edit& edit)
{
    if (category.rules == wanted) return;
    std::unordered_map<int, std::vector<std::size_t>> byId;
    for (std::size_t i = category.rules.size(); i-- > 0;)
        byId[category.rules[i].id].push_back(i); // the first one last
    ListChange change(category);
    for (const Rule& rule : wanted) {
        std::vector<std::size_t>& candidates = byId[rule.id];
        const auto same = std::find_if(candidates.rbegin(), candidates.rend(), [&](std::size_t candidate) {
            return category.rules[candidate] == rule;
        });
        if (same == candidates.rend()) {
            change.Put(rule);
            continue;
        }
        change.Keep(*same);
        candidates.erase(std::next(same).base());
    }
    change.AppendTo(edit);
}

} // namespace

Edit InsertRules(const Draft& draft, const CString& category, std::size_t position, std::vector<Rule> rules,
                 const CString& text)
{
    const SmallCategoryPtr present = CategoryOf(draft, category);
    if (position > present->rules.size()) throw std::out_of_range("the list ends before that position");
    position = std::min(position, EndOf(*present));
    std::erase_if(rules, [](const Rule& rule) { return rule.isDefault; });
    const std::vector<int> ids = draft.FreshIds(category, rules.size());
    ListChange change(*present);
    change.KeepRange(0, position);
    for (std::size_t i = 0; i < rules.size(); ++i) {
        NumberAnew(rules[i]);
        rules[i].id = ids[i];
        change.Put(std::move(rules[i]));
    }
    change.KeepRange(position, present->rules.size());
    Edit edit{text, {}};
    change.AppendTo(edit);
    return edit;
}

Edit ChangeRule(const Draft& draft, const CString& category, std::size_t position, Rule changed,
                const CString& text)
{
    const SmallCategoryPtr present = CategoryOf(draft, category);
    Edit edit{text, {}};
    AppendChanges(
        *present, PlacesIn(*present, {position}),
        [&](Rule& rule) {
            const Rule former = std::exchange(rule, std::move(changed));
            rule.id = former.id;
            rule.isDefault = former.isDefault;
            NumberParts(rule, former);
        },
        edit);
    return edit;
}

Edit DeleteRules(const Draft& draft, const CString& category, const std::vector<std::size_t>& positions)
{
    const SmallCategoryPtr present = CategoryOf(draft, category);
    const std::vector<std::size_t> gone = WithoutDefaults(*present, PlacesIn(*present, positions));
    ListChange change(*present);
    std::size_t next = 0;
    for (const std::size_t place : gone) {
        change.KeepRange(next, place);
        next = place + 1;
    }
    change.KeepRange(next, present->rules.size());
    Edit edit{Counted(u"删除"_s, gone.size()), {}};
    change.AppendTo(edit);
    return edit;
}

Edit MoveRules(const Draft& draft, const CString& category, const std::vector<std::size_t>& positions,
               std::size_t target)
{
    const SmallCategoryPtr present = CategoryOf(draft, category);
    if (target > present->rules.size()) throw std::out_of_range("the list ends before that position");
    const std::vector<std::size_t> moved = WithoutDefaults(*present, PlacesIn(*present, positions));
    std::vector<std::size_t> order;
    for (std::size_t i = 0; i <= present->rules.size(); ++i) {
        if (i == std::min(target, EndOf(*present))) order.insert(order.end(), moved.begin(), moved.end());
        if (i < present->rules.size() && !std::binary_search(moved.begin(), moved.end(), i))
            order.push_back(i);
    }
    return Reordered(*present, order, Counted(u"移动"_s, moved.size()));
}

Edit ShiftRules(const Draft& draft, const CString& category, const std::vector<std::size_t>& positions,
                bool down)
{
    const SmallCategoryPtr present = CategoryOf(draft, category);
    const std::vector<std::size_t> moved = WithoutDefaults(*present, PlacesIn(*present, positions));
    std::vector<std::size_t> order(present->rules.size());
    std::vector<bool> isMoved(order.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = i;
    for (const std::size_t place : moved)
        isMoved[place] = true;
    // Each rule that stays steps over the run of moved ones beside it.
    std::size_t count = 0;
    const auto swap = [&](std::size_t mover, std::size_t other) {
        if (!isMoved[order[mover]] || isMoved[order[other]]) return;
        std::swap(order[mover], order[other]);
        ++count;
    };
    const std::size_t end = EndOf(*present);
    if (down)
        for (std::size_t i = end; i-- > 1;)
            swap(i - 1, i);
    else
        for (std::size_t i = 1; i < end; ++i)
            swap(i, i - 1);
    return Reordered(*present, order, Counted(down ? u"下移"_s : u"上移"_s, count));
}

Edit Towards(const Draft& draft, const Configuration& wanted, const CString& text, bool isWhole)
{
    std::map<CString, SmallCategoryPtr> held;
    for (const Specialty& specialty : wanted.Specialties())
        for (const BigCategory& big : specialty.bigCategories)
            for (const SmallCategoryPtr& small : big.smallCategories)
                held.emplace(small->text, small);
    Edit edit{text, {}};
    for (const Specialty& specialty : draft.Specialties())
        for (const BigCategory& big : specialty.bigCategories)
            for (const SmallCategoryPtr& small : big.smallCategories) {
                const auto found = held.find(small->text);
                if (found != held.end())
                    AppendWay(*small, found->second->rules, edit);
                else if (isWhole && !HoldsBareDefaultAlone(*small))
                    AppendWay(*small, {BareDefault()}, edit);
            }
    return edit;
}

} // namespace rules
