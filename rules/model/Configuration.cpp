#include "rules/model/Configuration.h"

#include "tree/ConditionNode.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace rules {

CString Condition::Text() const
{
    return ConditionNode(attribute, isValueForm, equalOperator, lowerOperator, upperOperator, value,
                         lowerBound, upperBound)
        .GetConditionString();
}

CString Rule::Text() const
{
    if (isDefault) return u"其它"_s;
    CString text;
    for (const Condition& condition : conditions)
        text += condition.Text() + u';';
    return text;
}

Configuration::Configuration(std::vector<Specialty> specialties) : m_specialties(std::move(specialties)) {}

SmallCategoryPtr Configuration::Find(const CString& categoryText) const
{
    for (const Specialty& specialty : m_specialties)
        for (const BigCategory& big : specialty.bigCategories)
            for (const SmallCategoryPtr& small : big.smallCategories)
                if (small->text == categoryText) return small;
    return nullptr;
}

} // namespace rules
