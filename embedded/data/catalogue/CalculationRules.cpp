#include "embedded/data/catalogue/CalculationRules.h"

namespace embedded {

CalculationRules::CalculationRules(const CatalogueData& data, const Catalogue& catalogue)
    : m_data(data), m_catalogue(catalogue)
{
}

bool CalculationRules::GetCalItems(const CString& categoryText, CStringArray& items, CStringArray& other)
{
    const SmallCategory* const category = m_catalogue.FindByName(categoryText);
    if (category == nullptr) return false;
    items = category->mainItems;
    other = category->otherItems;
    return true;
}

bool CalculationRules::GetCalItemInfo(const CString& item, RuleCodeStruct& info)
{
    const auto rule = m_data.rules.constFind(item);
    if (rule == m_data.rules.constEnd()) return false;
    info = *rule;
    return true;
}

} // namespace embedded
