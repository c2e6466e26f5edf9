#pragma once

#include "rules/CompareTesting.h"
#include "rules/compare/Content.h"
#include "rules/draft/Draft.h"

#include <numeric>

/// Drafts of a few small categories in few words.
namespace test {

inline const CString DrainCategory = QStringLiteral("给排水\\管道\\排水管");

/// A rule for one material with one bill item, all parts numbered.
inline rules::Rule NumberedRule(int id, const CString& material, const CString& number)
{
    rules::Rule rule = PipeRule(id, material, number);
    rule.conditions[0].id = 1;
    return rule;
}

/// Rules 2, 3, 4 for 甲, 乙, 丙, and the default rule.
inline std::vector<rules::Rule> ThreeRules()
{
    return {NumberedRule(2, QStringLiteral("甲"), QStringLiteral("01")),
            NumberedRule(3, QStringLiteral("乙"), QStringLiteral("02")),
            NumberedRule(4, QStringLiteral("丙"), QStringLiteral("03")), rules::BareDefault()};
}

inline rules::ConfigurationPtr Shared(rules::Configuration configuration)
{
    return std::make_shared<const rules::Configuration>(std::move(configuration));
}

/// What a host offers: 给水管 and 排水管.
inline rules::ConfigurationPtr Offered()
{
    return Shared(ConfigurationOf({SmallOf(QStringLiteral("给水管"), {rules::BareDefault()}),
                                   SmallOf(QStringLiteral("排水管"), {rules::BareDefault()})}));
}

/// A draft of a file that has 给水管 alone, of these rules.
inline rules::Draft DraftOf(std::vector<rules::Rule> list)
{
    return {Shared(Pipes(std::move(list))), Offered()};
}

inline std::vector<rules::Rule> RulesIn(const rules::Draft& draft, const CString& category = PipeCategory)
{
    const rules::SmallCategoryPtr found = draft.Find(category);
    return found ? found->rules : std::vector<rules::Rule>();
}

inline std::vector<int> IdsOf(const std::vector<rules::Rule>& list)
{
    std::vector<int> ids;
    for (const rules::Rule& rule : list)
        ids.push_back(rule.id);
    return ids;
}

inline std::vector<int> IdsIn(const rules::Draft& draft, const CString& category = PipeCategory)
{
    return IdsOf(RulesIn(draft, category));
}

/// The draft with an edit done.
inline rules::Draft After(rules::Draft draft, const rules::Edit& edit)
{
    draft.Apply(edit);
    return draft;
}

} // namespace test
