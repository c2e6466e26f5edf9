#include "rules/compare/Comparison.h"

#include "rules/compare/Content.h"

#include <algorithm>
#include <unordered_map>

namespace rules {

namespace {

const Rule& RuleAt(const SmallCategory& category, int index)
{
    return category.rules[static_cast<std::size_t>(index)];
}

std::vector<SmallCategoryPtr> AllCategories(const Configuration& configuration)
{
    std::vector<SmallCategoryPtr> all;
    for (const Specialty& specialty : configuration.Specialties())
        for (const BigCategory& big : specialty.bigCategories)
            all.insert(all.end(), big.smallCategories.begin(), big.smallCategories.end());
    return all;
}

/// Takes what went from the first list, from `next` on up to that index.
void TakeRemoved(const RulePairing& pairing, int& next, int end, std::vector<RuleDifference>& differences)
{
    for (; next < end; ++next)
        if (pairing.afterOf[static_cast<std::size_t>(next)] == RulePairing::None)
            differences.push_back({next, RulePairing::None});
}

class Comparer
{
public:
    Comparison Run(const Configuration& before, const Configuration& after)
    {
        std::unordered_map<CString, SmallCategoryPtr> former;
        const auto formerInOrder = AllCategories(before);
        for (const SmallCategoryPtr& category : formerInOrder)
            former.emplace(category->text, category);
        for (const SmallCategoryPtr& category : AllCategories(after)) {
            const auto found = former.find(category->text);
            TakeCategory(found == former.end() ? nullptr : found->second, category);
            if (found != former.end()) former.erase(found);
        }
        for (const SmallCategoryPtr& category : formerInOrder)
            if (former.contains(category->text)) TakeCategory(category, nullptr);
        return std::move(m_result);
    }

private:
    void TakeCategory(const SmallCategoryPtr& before, const SmallCategoryPtr& after)
    {
        static const std::vector<Rule> NoRules;
        if (!before && HoldsBareDefaultAlone(*after)) {
            ++m_result.completed;
            return;
        }
        if (!after && HoldsBareDefaultAlone(*before)) {
            ++m_result.dropped;
            return;
        }
        if (before && after && before->isCompleted && !after->isCompleted) ++m_result.completed;
        CategoryDifference category{after ? after->text : before->text, before, after, {}};
        const std::vector<Rule>& formerRules = before ? before->rules : NoRules;
        const std::vector<Rule>& rules = after ? after->rules : NoRules;
        TakeRules(PairRules(formerRules, rules), formerRules, rules, category.rules);
        // What programs put into every category tells nothing of one that came or went.
        if (!before || !after)
            std::erase_if(category.rules,
                          [&](const RuleDifference& rule) { return IsBareDefault(category.RuleOf(rule)); });
        if (!category.rules.empty()) m_result.categories.push_back(std::move(category));
    }

    void TakeRules(const RulePairing& pairing, const std::vector<Rule>& before,
                   const std::vector<Rule>& after, std::vector<RuleDifference>& differences)
    {
        int next = 0;
        for (std::size_t j = 0; j < after.size(); ++j) {
            RuleDifference difference{pairing.beforeOf[j], static_cast<int>(j)};
            if (!difference.IsAdded()) {
                const auto i = static_cast<std::size_t>(difference.before);
                difference.isMoved = pairing.isMoved[i];
                difference.isChanged = !HasSameContent(before[i], after[j]);
                if (!difference.isMoved) TakeRemoved(pairing, next, difference.before, differences);
                if (!difference.isChanged && before[i].id != after[j].id) ++m_result.renumbered;
                if (!difference.isMoved && !difference.isChanged) continue;
            }
            differences.push_back(difference);
        }
        TakeRemoved(pairing, next, static_cast<int>(before.size()), differences);
    }

    Comparison m_result;
};

template <typename Is>
std::size_t Count(const Comparison& comparison, Is is)
{
    std::size_t count = 0;
    for (const CategoryDifference& category : comparison.categories)
        count += static_cast<std::size_t>(std::count_if(category.rules.begin(), category.rules.end(), is));
    return count;
}

} // namespace

const Rule& CategoryDifference::RuleOf(const RuleDifference& difference) const
{
    return difference.IsRemoved() ? RuleAt(*before, difference.before) : RuleAt(*after, difference.after);
}

std::size_t Comparison::Added() const
{
    return Count(*this, [](const RuleDifference& rule) { return rule.IsAdded(); });
}

std::size_t Comparison::Removed() const
{
    return Count(*this, [](const RuleDifference& rule) { return rule.IsRemoved(); });
}

std::size_t Comparison::Changed() const
{
    return Count(*this, [](const RuleDifference& rule) { return rule.isChanged; });
}

std::size_t Comparison::Moved() const
{
    return Count(*this, [](const RuleDifference& rule) { return rule.isMoved; });
}

Comparison Compare(const Configuration& before, const Configuration& after)
{
    return Comparer().Run(before, after);
}

} // namespace rules
