#include "rules/sql/Column.h"

#include "rules/sql/Dialect.h"

#include <algorithm>
#include <iterator>

namespace rules {

std::size_t Column::AddText(const CString& normalised)
{
    const auto [place, isNew] = m_texts.try_emplace(normalised, m_values.size() + 1);
    if (isNew) m_values.push_back({normalised, CompatibleFormsOf(normalised)});
    return place->second;
}

std::size_t Column::AddNumber(const Decimal& number)
{
    return m_numbers.try_emplace(number, m_numbers.size() + 1).first->second;
}

void Column::AddRanges(std::size_t category, const NumberReader& numbers)
{
    m_rangeCategories.insert(category);
    for (const auto& form : numbers.Forms())
        if (Dialect::CanHold(form.first) && Dialect::CanHold(form.second))
            m_numberForms[form].insert(category);
}

std::size_t Column::RangeOf(const Decimal& bound) const
{
    return 2 * static_cast<std::size_t>(std::distance(m_bounds.begin(), m_bounds.find(bound))) + 1;
}

std::vector<Column::NumberForm> Column::NumberForms() const
{
    std::vector<NumberForm> forms;
    for (const auto& [parts, categories] : m_numberForms)
        forms.push_back({parts.first, parts.second, categories, categories == m_rangeCategories});
    std::stable_sort(forms.begin(), forms.end(), [](const NumberForm& a, const NumberForm& b) {
        if (a.before.size() != b.before.size()) return a.before.size() > b.before.size();
        return a.behind.size() > b.behind.size();
    });
    return forms;
}

} // namespace rules
