#include "embedded/windows/KnownNames.h"

#include "embedded/data/catalogue/FormulaChecker.h"

namespace embedded {

KnownNames::KnownNames(host::ICalculationRules& rules, const CString& categoryText) : m_rules(rules)
{
    CStringArray main;
    CStringArray other;
    if (!rules.GetCalItems(categoryText, main, other)) return;
    AddItems(main);
    AddItems(other);
}

bool KnownNames::Contains(const CString& name) const
{
    RuleCodeStruct info;
    return m_names.contains(name) || m_rules.GetCalItemInfo(name, info);
}

void KnownNames::AddItems(const CStringArray& names)
{
    for (const CString& name : names) {
        RuleCodeStruct item;
        if (m_rules.GetCalItemInfo(name, item)) m_names.insert(item.strCode);
        item.strName = name;
        m_names.insert(name);
        for (const CString& quantity : NamesIn(item.strRule))
            m_names.insert(quantity);
        m_items.push_back(item);
    }
}

} // namespace embedded
