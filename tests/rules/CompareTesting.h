#pragma once

#include "rules/RulesTesting.h"
#include "rules/compare/DifferenceText.h"

#include <memory>
#include <vector>

/// Configurations of one small category in few words.
namespace test {

inline rules::BillItem Bill(const CString& number, const CString& formula = {},
                            std::vector<rules::QuotaItem> quotas = {})
{
    rules::BillItem item;
    item.id = 1;
    item.record.strQdId = number;
    item.record.strName = QStringLiteral("名称") + number;
    item.record.strUnit = QStringLiteral("m");
    item.record.strFormula = formula;
    item.quotas = std::move(quotas);
    return item;
}

inline rules::QuotaItem Quota(const CString& number, const CString& formula = {})
{
    rules::QuotaItem item;
    item.id = 1;
    item.record.strDeId = number;
    item.record.strName = QStringLiteral("名称") + number;
    item.record.strFormula = formula;
    return item;
}

/// A rule for one material with one bill item.
inline rules::Rule PipeRule(int id, const CString& material, const CString& number)
{
    rules::Rule rule = RuleOf({Value(QStringLiteral("材质"), QStringLiteral("＝"), material)});
    rule.id = id;
    rule.bills = {Bill(number)};
    rule.counters = {1, 1, 0};
    return rule;
}

inline rules::Rule DefaultRule(int id = 1)
{
    rules::Rule rule;
    rule.id = id;
    rule.isDefault = true;
    return rule;
}

/// Three pipes and the default rule.
inline const std::vector<rules::Rule> FourRules{PipeRule(2, QStringLiteral("钢管"), QStringLiteral("01")),
                                                PipeRule(3, QStringLiteral("铜管"), QStringLiteral("02")),
                                                PipeRule(4, QStringLiteral("PPR管"), QStringLiteral("03")),
                                                DefaultRule()};

inline rules::SmallCategoryPtr SmallOf(const CString& name, std::vector<rules::Rule> list)
{
    auto category = std::make_shared<rules::SmallCategory>();
    category->id = 111;
    category->name = name;
    category->text = QStringLiteral("给排水\\管道\\") + name;
    category->rules = std::move(list);
    return category;
}

inline rules::Configuration ConfigurationOf(std::vector<rules::SmallCategoryPtr> categories)
{
    return rules::Configuration(
        {{1, QStringLiteral("给排水"), {{11, QStringLiteral("管道"), std::move(categories)}}}});
}

/// With one category, 给水管, of these rules.
inline rules::Configuration Pipes(std::vector<rules::Rule> list)
{
    return ConfigurationOf({SmallOf(QStringLiteral("给水管"), std::move(list))});
}

inline std::vector<rules::Rule> RulesIn(const rules::Configuration& configuration,
                                        const CString& category = PipeCategory)
{
    const rules::SmallCategoryPtr found = configuration.Find(category);
    return found ? found->rules : std::vector<rules::Rule>();
}

/// A rule as text: what it says, without ids.
inline CString Told(const rules::Rule& rule)
{
    return rule.Text() + u'|' + rules::ItemLines(rule).join(u'|');
}

} // namespace test
