#include "rules/check/Check.h"

#include "rules/check/CheckParts.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <utility>

namespace rules {

namespace {

/// Where a category stands in the order of the file; the file itself stands first.
std::map<CString, int> Ranks(const Configuration& configuration)
{
    std::map<CString, int> ranks;
    int next = 1;
    for (const Specialty& specialty : configuration.Specialties()) {
        ranks.try_emplace(specialty.name, next++);
        for (const BigCategory& big : specialty.bigCategories) {
            ranks.try_emplace(specialty.name + u'\\' + big.name, next++);
            for (const SmallCategoryPtr& small : big.smallCategories)
                ranks.try_emplace(small->text, next++);
        }
    }
    return ranks;
}

/// Appends what `more` holds.
void Append(std::vector<Finding>& findings, std::vector<Finding> more)
{
    findings.insert(findings.end(), std::make_move_iterator(more.begin()),
                    std::make_move_iterator(more.end()));
}

std::vector<Finding> CheckOne(const SmallCategory& category, const CheckFacts& facts, ItemTexts& texts)
{
    static const CategoryFacts None;
    const auto attributes = facts.attributes.find(category.text);
    const CellSpace space(category, attributes == facts.attributes.end() ? None : attributes->second);
    FindingList findings;
    CheckList(category, findings);
    CheckApplication(category, space, facts, findings);
    CheckConditions(category, space, facts, findings);
    CheckItems(category, facts, texts, findings);
    std::stable_sort(findings.All().begin(), findings.All().end(),
                     [](const Finding& a, const Finding& b) { return a.position < b.position; });
    return std::move(findings.All());
}

} // namespace

std::vector<Finding> CheckCategory(const SmallCategory& category, const CheckFacts& facts)
{
    ItemTexts texts(facts);
    return CheckOne(category, facts, texts);
}

std::vector<Finding> Check(const Configuration& configuration, const FileStructure& structure,
                           const CheckFacts& facts)
{
    FindingList list;
    CheckStructure(configuration, structure, facts, list);
    std::vector<Finding> findings = std::move(list.All());
    ItemTexts texts(facts);
    for (const Specialty& specialty : configuration.Specialties())
        for (const BigCategory& big : specialty.bigCategories)
            for (const SmallCategoryPtr& small : big.smallCategories)
                Append(findings, CheckOne(*small, facts, texts));
    Append(findings, CheckBillNumbers(configuration, facts));
    const std::map<CString, int> ranks = Ranks(configuration);
    const auto rankOf = [&](const Finding& finding) {
        const auto place = ranks.find(finding.category);
        return std::pair(place == ranks.end() ? 0 : place->second, finding.position);
    };
    std::stable_sort(findings.begin(), findings.end(),
                     [&](const Finding& a, const Finding& b) { return rankOf(a) < rankOf(b); });
    return findings;
}

} // namespace rules
