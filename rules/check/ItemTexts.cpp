#include "rules/check/ItemTexts.h"

#include "rules/bill/Formula.h"

#include <algorithm>

namespace rules {

const UnitOfMeasure& ItemTexts::UnitOf(const CString& text)
{
    const auto [place, isNew] = m_units.try_emplace(text);
    if (isNew) place->second = UnitOfMeasure::Of(text);
    return place->second;
}

const ItemTexts::FormulaText& ItemTexts::FormulaOf(const CString& text)
{
    const auto [place, isNew] = m_formulas.try_emplace(text);
    if (isNew) place->second = Read(text);
    return place->second;
}

ItemTexts::FormulaText ItemTexts::Read(const CString& text) const
{
    FormulaText read;
    if (text.trimmed().isEmpty()) return read;
    const std::optional<Formula> formula = Formula::Parse(text);
    read.state = formula ? FormulaText::State::Good : FormulaText::State::Bad;
    if (!formula) return read;
    for (const CString& name : formula->Names())
        if (!m_facts.calculationItems.contains(name) && !m_facts.names.contains(name))
            read.furtherNames.append(name);
    read.dimension = Counted(text.trimmed());
    return read;
}

Dimension ItemTexts::Counted(const CString& formula) const
{
    auto counted = m_facts.dimensions.find(formula);
    if (counted == m_facts.dimensions.end()) {
        const auto written = std::find_if(m_facts.calculationItems.begin(), m_facts.calculationItems.end(),
                                          [&](const auto& entry) { return entry.second == formula; });
        if (written == m_facts.calculationItems.end()) return Dimension::Unknown;
        counted = m_facts.dimensions.find(written->first);
    }
    return counted == m_facts.dimensions.end() ? Dimension::Unknown : counted->second;
}

} // namespace rules
