#pragma once

#include "rules/match/CategoryMatcher.h"
#include "support/PrintText.h"

#include <memory>
#include <vector>

/// What the tests of the rules share: conditions and categories in few words.
namespace test {

inline const CString PipeCategory = QStringLiteral("给排水\\管道\\给水管");

inline rules::Condition Value(const CString& attribute, const CString& sign, const CString& value)
{
    rules::Condition condition;
    condition.attribute = attribute;
    condition.equalOperator = sign;
    condition.value = value;
    return condition;
}

inline rules::Condition Range(const CString& attribute, const CString& lowerSign, const CString& lower,
                              const CString& upperSign, const CString& upper)
{
    rules::Condition condition;
    condition.attribute = attribute;
    condition.isValueForm = false;
    condition.lowerOperator = lowerSign;
    condition.lowerBound = lower;
    condition.upperOperator = upperSign;
    condition.upperBound = upper;
    return condition;
}

inline rules::Rule RuleOf(std::vector<rules::Condition> conditions, bool isDefault = false)
{
    rules::Rule rule;
    rule.isDefault = isDefault;
    rule.conditions = std::move(conditions);
    return rule;
}

inline rules::SmallCategoryPtr CategoryOf(std::vector<rules::Rule> list)
{
    auto category = std::make_shared<rules::SmallCategory>();
    category->rules = std::move(list);
    for (std::size_t i = 0; i < category->rules.size(); ++i)
        category->rules[i].id = static_cast<int>(i) + 1;
    return category;
}

} // namespace test
