#include "rules/model/Configuration.h"

#include "tree/ConditionNode.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace rules {

namespace {

template <typename Part>
Part& NamedPart(std::vector<Part>& parts, const Part& like)
{
    for (Part& part : parts)
        if (part.name == like.name) return part;
    parts.push_back({like.id, like.name, {}});
    return parts.back();
}

void Take(std::vector<SmallCategoryPtr>& list, const SmallCategoryPtr& category)
{
    const auto former = std::find_if(list.begin(), list.end(), [&](const SmallCategoryPtr& known) {
        return known->name == category->name;
    });
    if (former == list.end())
        list.push_back(category);
    else
        *former = category;
}

} // namespace

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

Configuration Configuration::With(const std::vector<Specialty>& others,
                                  const std::function<bool(const SmallCategoryPtr&)>& isTaken) const
{
    std::vector<Specialty> specialties = m_specialties;
    for (const Specialty& specialty : others)
        for (const BigCategory& big : specialty.bigCategories)
            for (const SmallCategoryPtr& small : big.smallCategories)
                if (isTaken(small))
                    Take(NamedPart(NamedPart(specialties, specialty).bigCategories, big).smallCategories,
                         small);
    return Configuration(std::move(specialties));
}

} // namespace rules
